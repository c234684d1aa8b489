#include <foundation/Exception.h>

#include <boost/core/demangle.hpp>
#include <boost/stacktrace/stacktrace.hpp>

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <type_traits>

namespace Quenzo {

namespace {

// Deep enough to pass through a client's own layers, short enough to keep a failed look-up cheap.
constexpr std::size_t kMaxFrames = 24;

// How many modules have been unloaded so far.
unsigned long long CountUnloads() {
    unsigned long long count = 0;
    const auto readCount = [](dl_phdr_info* info, std::size_t /*size*/, void* result) {
        *static_cast<unsigned long long*>(result) = info->dlpi_subs;
        return 1;
    };
    dl_iterate_phdr(readCount, &count);
    return count;
}

// What the dynamic linker knows of code addresses. It searches a module's whole symbol table for each question, and
// failures come from the same few places, so the last answers are kept, in a table that never grows.
class SymbolCache {
public:
    Dl_info Find(const void* address) {
        Slot& slot = slots_[reinterpret_cast<std::uintptr_t>(address) / 4 % slots_.size()];
        {
            const std::lock_guard lock(mutex_);
            if (slot.address == address) {
                return slot.info;
            }
        }
        // Not under the lock: the linker has a lock of its own, and holds it while a module's load-time code runs,
        // which may fail as well.
        Dl_info found = {};
        if (dladdr(address, &found) == 0) {
            found = {};
        }
        const std::lock_guard lock(mutex_);
        slot = {address, found};
        return found;
    }

    // Another module may stand now where one was unloaded.
    void ForgetUnloaded() {
        const unsigned long long unloads = CountUnloads();
        const std::lock_guard lock(mutex_);
        if (unloads != unloads_) {
            slots_ = {};
            unloads_ = unloads;
        }
    }

private:
    struct Slot {
        const void* address = nullptr;
        Dl_info info = {};
    };

    std::mutex mutex_;
    std::array<Slot, 256> slots_;
    unsigned long long unloads_ = 0;
};

constinit SymbolCache symbols;

// Code that runs at exit may fail too.
static_assert(std::is_trivially_destructible_v<SymbolCache>);

// The dynamic linker alone is asked. The stack library's own text costs ten microseconds a frame.
void AppendFrame(std::string& text, const void* address) {
    const Dl_info info = symbols.Find(address);
    if (info.dli_sname != nullptr) {
        const boost::core::scoped_demangled_name readable(info.dli_sname);
        text.append(readable.get() != nullptr ? readable.get() : info.dli_sname);
    } else {
        const auto offset =
            reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(info.dli_fbase);
        std::array<char, 2 * sizeof offset> digits;
        text.append("0x").append(digits.begin(), std::to_chars(digits.begin(), digits.end(), offset, 16).ptr);
    }
    if (info.dli_fname != nullptr) {
        text.append(" in ").append(info.dli_fname);
    }
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
    const boost::stacktrace::stacktrace frames(ownFrame, kMaxFrames);
    symbols.ForgetUnloaded();
    for (const boost::stacktrace::frame& frame : frames) {
        text.append(std::to_string(number++)).append("# ");
        AppendFrame(text, frame.address());
        text.push_back('\n');
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
