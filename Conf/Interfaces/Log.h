#pragma once

// The library's few log lines go through glog. Loading glog takes longer than loading the library, and most processes
// never log a line, so glog stands behind a library of its own that is loaded with the first line. A static build links
// it directly.

#include <foundation/Export.h>

#include <atomic>
#include <string_view>

namespace Quenzo::Detail {

/// What the logging library does for this one.
struct LogFunctions {
    /// Writes an informational line. The file and the line number are those of the code that reports.
    void (*inform)(const char* file, int line, std::string_view text);

    /// True when verbose lines of that level are wanted from that source file.
    bool (*isVerbose)(const char* file, int level);
};

/// Loads glog when called first, from any thread. When the logging library is not installed, informational lines go to
/// the standard error and no verbose lines are wanted.
const LogFunctions& Log();

}  // namespace Quenzo::Detail

/// The functions as glog fulfils them.
extern "C" const Quenzo::Detail::LogFunctions quenzoConfGlog;

/// What the library that stands before glog shows of itself: those functions, and null until it is loaded. The thread
/// whose dlopen loads it is not the only one that uses it: any other whose dlopen finds it loaded sees all of glog's
/// own initialisation through this object. Volatile, as clang 16 would else give it its value while compiling. A static
/// build has no such library.
extern "C" QUENZO_API volatile std::atomic<const Quenzo::Detail::LogFunctions*> quenzoConfLoadedGlog;
