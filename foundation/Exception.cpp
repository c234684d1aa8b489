#include <foundation/Exception.h>

#include <boost/core/demangle.hpp>
#include <boost/stacktrace/stacktrace.hpp>

#include <fmt/format.h>

#include <dlfcn.h>

#include <cstdint>

namespace Quenzo {

namespace {

// Deep enough to pass through a client's own layers, short enough to keep a failed look-up cheap.
constexpr std::size_t kMaxFrames = 24;

// The dynamic linker alone is asked. The stack library's own text costs ten microseconds a frame.
std::string DescribeFrame(const void* address) {
    Dl_info info = {};
    if (dladdr(address, &info) == 0) {
        info = {};
    }
    std::string text;
    if (info.dli_sname != nullptr) {
        const boost::core::scoped_demangled_name readable(info.dli_sname);
        text = readable.get() != nullptr ? readable.get() : info.dli_sname;
    } else {
        const auto offset =
            reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(info.dli_fbase);
        text = fmt::format("{:#x}", offset);
    }
    if (info.dli_fname != nullptr) {
        text.append(" in ").append(info.dli_fname);
    }
    return text;
}

}  // namespace

const char* Exception::what() const noexcept {
    const std::string* description = boost::get_error_info<TagDescription>(*this);
    return description != nullptr ? description->c_str() : GetClassName();
}

const char* Exception::GetClassName() const noexcept { return "Quenzo::Exception"; }

std::string GetCallStack() {
    constexpr std::size_t ownFrame = 1;
    std::string text;
    std::size_t number = 0;
    for (const boost::stacktrace::frame& frame : boost::stacktrace::stacktrace(ownFrame, kMaxFrames)) {
        text.append(std::to_string(number++)).append("# ").append(DescribeFrame(frame.address())).push_back('\n');
    }
    return text;
}

namespace Core {

const char* CoreException::GetClassName() const noexcept { return "Quenzo::Core::CoreException"; }

const char* PropertyException::GetClassName() const noexcept { return "Quenzo::Core::PropertyException"; }

const char* MethodIsNotApplicable::GetClassName() const noexcept { return "Quenzo::Core::MethodIsNotApplicable"; }

const char* StreamException::GetClassName() const noexcept { return "Quenzo::Core::StreamException"; }

}  // namespace Core
}  // namespace Quenzo
