#include <Conf/Interfaces/Log.h>

#ifdef QUENZO_LOG_LIBRARY

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstdio>
#include <string>

namespace Quenzo::Detail {

namespace {

constexpr LogFunctions kWithoutGlog = {
    [](const char* file, int line, std::string_view text) {
        const std::string whole = std::string(file) + ':' + std::to_string(line) + "] " + std::string(text) + '\n';
        std::fwrite(whole.data(), 1, whole.size(), stderr);
    },
    [](const char* /*file*/, int /*level*/) { return false; },
};

// The folder of this library, as it was when the library was loaded: the path that it was loaded by may begin in a
// folder that the process has left since. Not $ORIGIN, which a sanitizer takes for its own when it stands between.
std::string OwnFolder() {
    Dl_info info = {};
    link_map* self = nullptr;
    // The loader puts the folder that the process was in before a path that does not begin at the root.
    std::array<char, 2UL * PATH_MAX> folder = {};
    const bool isFound = dladdr1(&kWithoutGlog, &info, reinterpret_cast<void**>(&self), RTLD_DL_LINKMAP) != 0 &&
                         dlinfo(self, RTLD_DI_ORIGIN, folder.data()) == 0;
    return isFound ? folder.data() : "";
}

// The logging library lies beside this one, wherever both were installed. It stays loaded: what glog registers with
// other libraries cannot be taken back.
const LogFunctions& LoadGlog() {
    const std::string path = OwnFolder() + "/" QUENZO_LOG_LIBRARY;
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* symbol = library != nullptr ? dlsym(library, "quenzoConfLoadedGlog") : nullptr;
    if (symbol == nullptr) {
        return kWithoutGlog;
    }
    const LogFunctions* loaded = static_cast<decltype(quenzoConfLoadedGlog)*>(symbol)->load(std::memory_order_acquire);
    return loaded != nullptr ? *loaded : kWithoutGlog;
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
