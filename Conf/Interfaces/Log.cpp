#include <Conf/Interfaces/Log.h>

#ifdef QUENZO_LOG_LIBRARY

#include <dlfcn.h>

#include <atomic>
#include <cstdio>

namespace Quenzo::Detail {

namespace {

constexpr LogFunctions kWithoutGlog = {
    [](const char* file, int line, std::string_view text) {
        std::fprintf(stderr, "%s:%d] ", file, line);
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fputc('\n', stderr);
    },
    [](const char* /*file*/, int /*level*/) { return false; },
};

// The logging library lies beside this one, wherever both were installed. It stays loaded: what glog registers with
// other libraries cannot be taken back.
const LogFunctions& LoadGlog() {
    void* library = dlopen("$ORIGIN/" QUENZO_LOG_LIBRARY, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const void* functions = library != nullptr ? dlsym(library, "quenzoConfGlog") : nullptr;
    return functions != nullptr ? *static_cast<const LogFunctions*>(functions) : kWithoutGlog;
}

}  // namespace

// Not a local static object: a thread would wait for the one that makes it, and that one for the loader, which the
// first may be holding, when it asks while a module is loaded. To load twice does no harm.
const LogFunctions& Log() {
    static constinit std::atomic<const LogFunctions*> functions = nullptr;
    const LogFunctions* found = functions.load(std::memory_order_acquire);
    if (found == nullptr) {
        found = &LoadGlog();
        functions.store(found, std::memory_order_release);
    }
    return *found;
}

}  // namespace Quenzo::Detail

#else

namespace Quenzo::Detail {

const LogFunctions& Log() { return quenzoConfGlog; }

}  // namespace Quenzo::Detail

#endif
