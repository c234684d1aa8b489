// The example frame-size: what it says when its arguments make no sense.

#include <tests/RunProgram.h>

#include <foundation/StringUtils.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Quenzo::Tests {
namespace {

Testing::ProgramResult RunFrameSize(const std::vector<std::string>& arguments) {
    std::vector<std::string> command;
    SplitString(command, QUENZO_TEST_EMULATOR, ' ');
    command.emplace_back(QUENZO_TEST_FRAME_SIZE);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Testing::RunProgram(command);
}

TEST(FrameSizeExample, TakesTheLargestSide) {
    const auto result = RunFrameSize({"YUV420P", "65535", "1", "0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("plane 0: 65535x1, 65535 bytes a row, 65535 bytes\n")) << result.output;
}

TEST(FrameSizeExample, SaysWhichNumbersItTakes) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"YUV420P", "70000", "1", "1"}, {"YUV420P", "1", "65536", "1"}, {"YUV420P", "1", "1", "32768"}, {}}) {
        const auto result = RunFrameSize(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.messages,
                  "usage: frame-size FORMAT WIDTH HEIGHT DEGREES, such as: frame-size YUV420P 1920 1080 90\n"
                  "WIDTH and HEIGHT are whole numbers from 0 to 65535, DEGREES is one from -32768 to 32767\n");
    }
}

}  // namespace
}  // namespace Quenzo::Tests
