#pragma once

#include <cstdio>
#include <cstdlib>

namespace Quenzo::Fuzz {

/// Ends the program, which the fuzzer reports with the bytes that led here.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

}  // namespace Quenzo::Fuzz
