#pragma once

#include <cstdio>
#include <cstdlib>

namespace Quenzo::Bench {

/// Ends the program with a message unless the condition holds: the time of a wrong answer is worth nothing.
inline void Verify(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "benchmark: wrong answer: %s\n", what);
        std::abort();
    }
}

}  // namespace Quenzo::Bench
