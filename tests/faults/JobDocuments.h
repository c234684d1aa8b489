#pragma once

// The job documents that the tests of faults read.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace Quenzo::Testing {

constexpr const char* kJobDocuments[] = {"every-kind-of-value.json", "ids-in-any-order.json", "probed-clip.json",
                                         "two-sources.json"};

/// The bytes of one of them.
inline std::string JobDocument(const std::string& name) {
    std::ifstream file(std::string(QUENZO_TEST_JOBS "/") + name, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    EXPECT_FALSE(bytes.empty()) << name;
    return bytes;
}

}  // namespace Quenzo::Testing
