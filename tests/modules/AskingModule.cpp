// A module that has the library ask whether a line is to be logged, while it is being loaded, and once another thread
// has begun to ask the same.

#include <tests/modules/Modules.h>

#include <Conf/Interfaces/AppleUTI.h>

#include <chrono>
#include <thread>

namespace {

struct AsksAtLoad {
    AsksAtLoad() {
        using std::chrono::milliseconds;
        loading = Loading::Begun;
        while (loading != Loading::Asked) {
            std::this_thread::sleep_for(milliseconds(1));
        }
        // Nobody can say that the other thread has come as far as the loader, only that it had the time.
        std::this_thread::sleep_for(milliseconds(100));
        Quenzo::Conf::UTI::FindFormatID("no.such.type");
    }
};

// NOLINTNEXTLINE(cert-err58-cpp): code that runs at load is what is tested here
const AsksAtLoad asksAtLoad;

}  // namespace
