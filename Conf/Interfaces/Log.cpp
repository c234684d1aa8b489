#include <Conf/Interfaces/Log.h>

#ifdef QUENZO_LOG_LIBRARY

#include <dlfcn.h>

#include <cstdio>

namespace Quenzo::Detail {

namespace {

constexpr LogFunctions kWithoutGlog = {
    [](const char* file, int line, const char* text) { std::fprintf(stderr, "%s:%d] %s\n", file, line, text); },
    [](int /*level*/) { return false; },
};

// The logging library lies beside this one, wherever both were installed.
std::string LogLibrary() {
    Dl_info self = {};
    const bool isFound = dladdr(&kWithoutGlog, &self) != 0 && self.dli_fname != nullptr;
    const std::string path = isFound ? self.dli_fname : "";
    return path.substr(0, path.rfind('/') + 1) + QUENZO_LOG_LIBRARY;
}

// It stays loaded: what glog registers with other libraries cannot be taken back.
const LogFunctions& LoadGlog() {
    void* library = dlopen(LogLibrary().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const void* functions = library != nullptr ? dlsym(library, "quenzoConfGlog") : nullptr;
    return functions != nullptr ? *static_cast<const LogFunctions*>(functions) : kWithoutGlog;
}

}  // namespace

const LogFunctions& Log() {
    static const LogFunctions& functions = LoadGlog();
    return functions;
}

}  // namespace Quenzo::Detail

#else

namespace Quenzo::Detail {

const LogFunctions& Log() { return quenzoConfGlog; }

}  // namespace Quenzo::Detail

#endif
