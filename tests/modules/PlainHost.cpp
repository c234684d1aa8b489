// Raises every class of failure in one module, through another, and has a third catch it by class, as ModuleTest.cpp
// does; without GoogleTest, for a C++ runtime library that GoogleTest was not built with. Ends with status 1 when a
// failure was caught otherwise than it should be.
//
//   plain-host FOLDER     where the modules are

#include <tests/modules/Modules.h>

#include <dlfcn.h>

#include <cstdio>
#include <string>

namespace {

// Among all modules, as those that a program is linked to are: only then is a type described in one place.
template <typename Function>
Function* Find(const std::string& module, const char* name) {
    void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_GLOBAL);
    void* const function = handle != nullptr ? dlsym(handle, name) : nullptr;
    if (function == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
    }
    return reinterpret_cast<Function*>(function);
}

decltype(&Raise) raise = nullptr;
decltype(&PassOn) passOn = nullptr;

}  // namespace

int main(int argc, char** argv) {
    const std::string folder = argc == 2 ? argv[1] : ".";
    raise = Find<decltype(Raise)>(folder + "/raising-module.so", "Raise");
    passOn = Find<decltype(PassOn)>(folder + "/passing-module.so", "PassOn");
    auto* const count = Find<decltype(CountFailures)>(folder + "/raising-module.so", "CountFailures");
    auto* const catchIt = Find<decltype(Catch)>(folder + "/catching-module.so", "Catch");
    if (raise == nullptr || passOn == nullptr || count == nullptr || catchIt == nullptr) {
        return 1;
    }
    int wrong = 0;
    for (int number = 0; number < count(); ++number) {
        const int direct = catchIt(raise, number);
        const int passed = catchIt([](int which) { passOn(raise, which); }, number);
        if (direct != 31 || passed != 31) {
            std::fprintf(stderr, "failure %d: caught as %d and, passed on, as %d, not 31\n", number, direct, passed);
            ++wrong;
        }
    }
    std::printf("%d classes of failures, %d not known where they were caught\n", count(), wrong);
    return wrong == 0 && count() == 17 ? 0 : 1;
}
