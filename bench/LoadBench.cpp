// Loads the library, an empty one or GStreamer's, once, and writes the processor time and the blocks of memory that
// this took, in the form in which the other programs write theirs. A library is loaded once in a process: whoever wants
// a median starts this program as often.
//
//   bench-load Quenzo|Empty|GStreamer

#include <bench/Verify.h>

#include <dlfcn.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

// The C library's own, under the names that it keeps for whoever replaces them.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);

namespace {

using Quenzo::Bench::Verify;

std::size_t blocks = 0;

double ProcessorNanoseconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

void* Load(const char* path) {
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    Verify(library != nullptr, path);
    return library;
}

template <typename T>
T* Symbol(void* library, const char* name) {
    void* symbol = dlsym(library, name);
    Verify(symbol != nullptr, name);
    return reinterpret_cast<T*>(symbol);
}

// The lower library first, so that the loader does not search for it: in a build tree it would look into a score of
// folders for one made for a particular processor, but installed libraries name no folder. A constant has its value, so
// what runs at load has run.
void LoadQuenzo() {
    void* lower = Load(QUENZO_BENCH_FOUNDATION);
    void* library = Load(QUENZO_BENCH_CONF);
    constexpr const char* function = "_ZN6Quenzo12GetCallStackB5cxx11Ev";
    Verify(Symbol<void>(library, function) == Symbol<void>(lower, function),
           "the lower library is the one that is used");
    Verify(*Symbol<const std::string>(library, "_ZN6Quenzo4Conf15VideoVocabulary9TAG_WIDTHB5cxx11E") == "width",
           "a constant of the library");
}

void LoadEmpty() { Verify(Symbol<int()>(Load(QUENZO_BENCH_EMPTY), "QuenzoBenchEmpty")() == 1, "the empty library"); }

// With its initialisation, as nothing of it can be used before.
void LoadGStreamer() {
    void* library = dlopen("libgstreamer-1.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::exit(3);
    }
    Symbol<void(int*, char***)>(library, "gst_init")(nullptr, nullptr);
    Verify(Symbol<int()>(library, "gst_is_initialized")() != 0, "GStreamer is initialised");
}

}  // namespace

extern "C" void* malloc(std::size_t size) {
    ++blocks;
    return __libc_malloc(size);
}

extern "C" void* calloc(std::size_t count, std::size_t size) {
    ++blocks;
    return __libc_calloc(count, size);
}

int main(int argc, char** argv) {
    const std::string_view column = argc == 2 ? argv[1] : "";
    void (*load)() = nullptr;
    if (column == "Quenzo") {
        load = LoadQuenzo;
    } else if (column == "Empty") {
        load = LoadEmpty;
    } else if (column == "GStreamer") {
        load = LoadGStreamer;
    } else {
        std::fputs("usage: bench-load Quenzo|Empty|GStreamer\n", stderr);
        return 2;
    }
    const std::size_t blocksBefore = blocks;
    const double before = ProcessorNanoseconds();
    load();
    const double after = ProcessorNanoseconds();
    std::printf(R"({"benchmarks": [{"name": "LibraryLoad/%s", "cpu_time": %.0f, "time_unit": "ns"},)"
                R"({"name": "LibraryLoadAllocations/%s", "allocations": %zu}]})"
                "\n",
                argv[1], after - before, argv[1], blocks - blocksBefore);
}
