// Job documents of earlier versions, kept as they were saved: every later version loads them with the same content. The
// documents and what is expected to be in them lie in tests/data/jobs. They are added to, never changed.

#include <tests/tools/ProgramRunner.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace Quenzo::Tests {
namespace {

const std::filesystem::path kJobs = QUENZO_TEST_JOBS;

class GoldenJob : public testing::TestWithParam<const char*> {};

TEST_P(GoldenJob, LoadsWithTheSameContent) {
    const std::filesystem::path document = kJobs / (std::string(GetParam()) + ".json");
    const auto shown = RunProgram({"job", "show", document.string()});
    EXPECT_EQ(shown.status, 0) << shown.messages;
    EXPECT_EQ(shown.output, ReadFile(kJobs / (std::string(GetParam()) + ".txt")));
    EXPECT_EQ(RunProgram({"job", "check", document.string()}).output, "valid\n");
}

INSTANTIATE_TEST_SUITE_P(All, GoldenJob,
                         testing::Values("every-kind-of-value", "ids-in-any-order", "probed-clip", "two-sources"));

}  // namespace
}  // namespace Quenzo::Tests
