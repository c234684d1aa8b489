// Covers the results of the library's arithmetic as a whole: a hundred and ten thousand bit rates, entries of display
// matrices, boxes, sizes of planes and angles are those of tests/data/golden-numbers.txt, bit for bit, on every
// machine. write-golden-numbers made the file; what each number should be is the business of the other tests.

#include <tests/Conf/GoldenNumbers.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

namespace Quenzo::Testing {
namespace {

std::vector<std::string> ReadLines(const std::string& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(GoldenNumbers, AreTheSameOnEveryMachine) {
    const std::vector<std::string> expected = ReadLines(QUENZO_TEST_GOLDEN_NUMBERS);
    const std::vector<std::string> actual = GoldenNumbers();
    ASSERT_EQ(actual.size(), expected.size());
    std::size_t numbers = 0;
    int different = 0;
    for (std::size_t line = 0; line < expected.size(); ++line) {
        numbers += static_cast<std::size_t>(std::count(expected[line].begin(), expected[line].end(), ' '));
        if (actual[line] != expected[line] && ++different <= 10) {
            EXPECT_EQ(actual[line], expected[line]) << "line " << line + 1;
        }
    }
    EXPECT_EQ(numbers, 110000U);
    EXPECT_EQ(different, 0);
}

}  // namespace
}  // namespace Quenzo::Testing
