#pragma once

#include <Conf/Interfaces/Exceptions.h>
#include <tests/foundation/Failures.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace Quenzo::Conf::Testing {

/// The call must raise exactly a FormatException with this description, which it shows, and with a call stack.
template <typename Call>
void ExpectFormatFailure(const Call& call, const std::string& description) {
    using Quenzo::Testing::TagOf;
    const auto failure = Quenzo::Testing::Raised<FormatException>(call);
    EXPECT_EQ(failure.what(), description);
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), description);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
    EXPECT_NE(Quenzo::Testing::FunctionOf(failure), "");
}

/// The text with each of its characters replaced by another in turn, left out, and written twice.
inline std::vector<std::string> OneCharacterOff(std::string_view text, char other) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < text.size(); ++i) {
        texts.push_back(std::string(text).replace(i, 1, 1, other));
        texts.push_back(std::string(text).erase(i, 1));
        texts.push_back(std::string(text).insert(i, 1, text[i]));
    }
    return texts;
}

/// What a call returns on each of four threads at the same time.
template <typename Call>
std::array<std::size_t, 4> OnFourThreads(const Call& call) {
    std::array<std::size_t, 4> results = {};
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (std::size_t& result : results) {
        threads.emplace_back([&call, &result] { result = static_cast<std::size_t>(call()); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return results;
}

}  // namespace Quenzo::Conf::Testing
