// Covers the shared libraries in a program that is not linked to them: loaded and unloaded again and again behind a
// module that uses them, failures that cross modules with hidden symbols, and call stacks when another module stands
// where one was unloaded.

#include <tests/faults/FailingMemory.h>
#include <tests/modules/Modules.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>

std::atomic<Loading> loading = Loading::NotBegun;

namespace Quenzo::Testing {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string LastError() {
    const char* const error = dlerror();
    return error != nullptr ? error : "";
}

// A loaded module, unloaded with the object.
class Module {
public:
    explicit Module(const std::string& path) : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(handle_, nullptr) << LastError();
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module() { EXPECT_EQ(dlclose(handle_), 0) << LastError(); }

    template <typename Function>
    Function* Find(Function* /*type*/, const char* name) const {
        void* const address = dlsym(handle_, name);
        EXPECT_NE(address, nullptr) << LastError();
        return reinterpret_cast<Function*>(address);
    }

private:
    void* handle_;
};

#define FIND(module, function) (module).Find(static_cast<decltype(&(function))>(nullptr), #function)

bool IsMapped(const std::string& file) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(file) != std::string::npos) {
            return true;
        }
    }
    return false;
}

constexpr int kRounds = 100;

// The loader and the C library keep something of the first rounds for the next.
constexpr int kSettledAfter = 10;

struct Memory {
    long blocks;
    std::size_t bytes;

    bool operator==(const Memory& other) const = default;
};

void PrintTo(const Memory& memory, std::ostream* os) {
    *os << memory.blocks << " blocks, " << memory.bytes << " bytes";
}

// What operator new and malloc have handed out.
Memory InUse() { return {LiveBlocks(), mallinfo2().uordblks}; }

TEST(ModuleTest, Foundation_LeavesWithItsModuleAndLeavesNothingBehind) {
    Memory early = {};
    for (int round = 1; round <= kRounds; ++round) {
        EXPECT_FALSE(IsMapped("libquenzo"));
        {
            const Module module(QUENZO_TEST_MODULES "/First-stack-module.so");
            EXPECT_TRUE(IsMapped("libquenzo-foundation.so"));
            EXPECT_NE(FIND(module, StackOfModule)(), nullptr);
        }
        EXPECT_FALSE(IsMapped("First-stack-module.so"));
        early = round == kSettledAfter ? InUse() : early;
    }
    EXPECT_FALSE(IsMapped("libquenzo"));
    EXPECT_EQ(InUse(), early);
}

// What a library forgets it forgets in every round. The loader's own lists, which come from malloc, grow in some.
template <typename Round>
void ExpectRoundsLoseNothing(Round round) {
    int lost = 0;
    int growths = 0;
    Memory last = {};
    for (int number = 1; number <= kRounds; ++number) {
        round();
        const Memory now = InUse();
        if (number > kSettledAfter) {
            lost += now.blocks != last.blocks ? 1 : 0;
            growths += now.bytes > last.bytes ? 1 : 0;
        }
        last = now;
    }
    EXPECT_EQ(lost, 0);
    EXPECT_LT(growths, (kRounds - kSettledAfter) / 2);
}

TEST(ModuleTest, Conf_LeavesWithItsModuleAndLeavesNothingBehind) {
    ExpectRoundsLoseNothing([] {
        {
            const Module module(QUENZO_TEST_MODULES "/user-module.so");
            ASSERT_EQ(FIND(module, UseLibrary)(), 7);
            EXPECT_TRUE(IsMapped("libquenzo-conf.so"));
        }
        EXPECT_FALSE(IsMapped("libquenzo"));
    });
}

// An unknown identifier is one for the log.
TEST(ModuleTest, Conf_LeavesGlogAlone) {
    EXPECT_FALSE(IsMapped("libglog.so"));
    ExpectRoundsLoseNothing([] {
        {
            const Module module(QUENZO_TEST_MODULES "/user-module.so");
            ASSERT_TRUE(FIND(module, AskTheLog)());
        }
        EXPECT_FALSE(IsMapped("libquenzo-conf.so"));
        EXPECT_FALSE(IsMapped("libquenzo-foundation.so"));
        EXPECT_TRUE(IsMapped("libglog.so"));
    });
}

void LogALine() {
    const Module module(QUENZO_TEST_MODULES "/user-module.so");
    EXPECT_TRUE(FIND(module, AskTheLog)());
    FIND(module, WriteTheLog)();
}

// In a process in which nothing has been logged yet: the program starts anew, save under an emulator, where it cannot
// start itself and its copy has to do. There other tests must not have run before in the same process.
class FreshProcess : public ::testing::Test {
protected:
    FreshProcess() { GTEST_FLAG_SET(death_test_style, QUENZO_TEST_EMULATED ? "fast" : "threadsafe"); }
};

void LogWithoutTheLoggingLibrary() {
    std::string folder = (std::filesystem::temp_directory_path() / "quenzo-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    const std::string alone = folder + "/libquenzo-conf.so";
    std::filesystem::copy_file(QUENZO_TEST_CONF, alone);
    const Module conf(alone);
    std::filesystem::remove_all(folder);
    LogALine();
}

// The library looks for the logging library beside itself. What only a verbose log says is not written.
TEST_F(FreshProcess, LogGoesToStandardErrorWithoutTheLoggingLibrary) {
    EXPECT_EXIT(LogWithoutTheLoggingLibrary();
                std::exit(HasFailure() ? 1 : 0), ::testing::ExitedWithCode(0),
                AllOf(StartsWith("Conf/Interfaces/ITranscodingMetaGraph.cpp:"),
                      EndsWith("] Replacing output format for lossless conversion to DVD\n")));
}

void LogAfterLeavingTheFolder() {
    const std::filesystem::path file = QUENZO_TEST_CONF;
    std::filesystem::current_path(file.parent_path());
    const Module conf("./" + file.filename().string());
    std::filesystem::current_path("/");
    LogALine();
}

// Also when it was loaded by a path that begins in a folder that the process has left since.
TEST_F(FreshProcess, LoggingLibraryIsFoundFromWhereverTheProcessIs) {
    EXPECT_EXIT(LogAfterLeavingTheFolder();
                std::exit(HasFailure() ? 1 : 0), ::testing::ExitedWithCode(0),
                ContainsRegex("I[0-9. :]+ ITranscodingMetaGraph.cpp:[0-9]+. Replacing output format"));
}

// One thread holds the loader and waits for the log, while the other, which is the first to ask, needs the loader.
TEST(ModuleTest, Log_IsAskedWhileAModuleIsLoaded) {
    const Module module(QUENZO_TEST_MODULES "/user-module.so");
    auto* const ask = FIND(module, AskTheLog);
    loading = Loading::NotBegun;
    std::thread loader([] {
        const Module asking(QUENZO_TEST_MODULES "/asking-module.so");
        // Also when the module was not there and has said nothing.
        loading = Loading::Begun;
    });
    while (loading != Loading::Begun) {
        std::this_thread::yield();
    }
    loading = Loading::Asked;
    EXPECT_TRUE(ask());
    loader.join();
}

TEST(ModuleTest, Failures_CrossModulesByTheirClass) {
    const Module raising(QUENZO_TEST_MODULES "/raising-module.so");
    const Module passing(QUENZO_TEST_MODULES "/passing-module.so");
    const Module catching(QUENZO_TEST_MODULES "/catching-module.so");
    static auto* const raise = FIND(raising, Raise);
    static auto* const passOn = FIND(passing, PassOn);
    auto* const catchIt = FIND(catching, Catch);
    const int count = FIND(raising, CountFailures)();
    EXPECT_EQ(count, 17);
    for (int number = 0; number < count; ++number) {
        EXPECT_EQ(catchIt(raise, number), 31) << number;
        EXPECT_EQ(catchIt([](int which) { passOn(raise, which); }, number), 31) << number;
    }
    // The classes are told apart: what is raised as the root is no other class.
    EXPECT_EQ(catchIt([](int) { raise(0); }, 1), 4 + 8 + 16);
}

// The library keeps what the linker told it of an address, and has to forget it when another module stands there.
TEST(ModuleTest, CallStack_NamesTheModuleThatIsThereNow) {
    const Module foundation(QUENZO_TEST_FOUNDATION);
    std::set<const void*> places;
    for (int round = 0; round < 10; ++round) {
        for (const char* const name : {"First", "Other"}) {
            const Module module(std::string(QUENZO_TEST_MODULES "/") + name + "-stack-module.so");
            auto* const stackOfModule = FIND(module, StackOfModule);
            places.insert(reinterpret_cast<const void*>(stackOfModule));
            const std::string stack = stackOfModule();
            EXPECT_THAT(stack, HasSubstr(std::string(name) + "Function"));
            EXPECT_THAT(stack, HasSubstr(std::string(name) + "-stack-module.so"));
            EXPECT_THAT(stack, Not(HasSubstr(name == std::string("First") ? "Other" : "First")));
        }
    }
    if (QUENZO_TEST_EMULATED && places.size() == 20U) {
        GTEST_SKIP() << "the emulator loads no module where another had been";
    }
    // Else nothing was shown.
    EXPECT_LT(places.size(), 20U);
}

}  // namespace
}  // namespace Quenzo::Testing
