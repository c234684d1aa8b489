#include <Conf/Interfaces/Log.h>

constinit volatile std::atomic<const Quenzo::Detail::LogFunctions*> quenzoConfLoadedGlog = nullptr;

namespace {

// Runs when the library is loaded, after what glog, which it needs, does when it is loaded itself.
[[gnu::constructor]] void Publish() { quenzoConfLoadedGlog.store(&quenzoConfGlog, std::memory_order_release); }

}  // namespace
