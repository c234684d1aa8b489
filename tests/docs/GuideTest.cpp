// The examples of docs/guide: the blocks of C++ of a page, compiled as one program, print what the page says they do.

#include <tests/docs/Guide.h>
#include <tests/docs/Page.h>

#include <foundation/StringUtils.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace Quenzo::Docs {
namespace {

std::vector<std::string> CompiledPages() {
    std::vector<std::string> pages;
    SplitString(pages, QUENZO_TEST_PAGES, ' ');
    return pages;
}

std::string TestName(const testing::TestParamInfo<std::string>& page) {
    std::string name = page.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class Guide : public testing::TestWithParam<std::string> {};

TEST_P(Guide, ExamplesPrintWhatThePageSays) {
    const std::filesystem::path page = InRepository("docs/guide/" + GetParam() + ".md");
    const std::vector<Example> examples = ReadExamples(page);
    ASSERT_FALSE(examples.empty());
    const GuideFolder folder;
    const auto result = RunBuilt({std::string(QUENZO_TEST_GUIDE "/") + GetParam()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    const std::vector<std::string> outputs = SplitParts(result.output);
    ASSERT_EQ(outputs.size(), examples.size());
    for (std::size_t i = 0; i < examples.size(); ++i) {
        EXPECT_EQ(outputs[i], examples[i].output) << page << ", example in line " << examples[i].code.line;
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, Guide, testing::ValuesIn(CompiledPages()), TestName);

TEST(GuidePages, EveryPageWithAnExampleIsCompiled) {
    std::vector<std::string> pages;
    for (const auto& file : std::filesystem::directory_iterator(InRepository("docs/guide"))) {
        if (!ReadExamples(file.path()).empty()) {
            pages.push_back(file.path().stem().string());
        }
    }
    EXPECT_THAT(pages, testing::UnorderedElementsAreArray(CompiledPages()));
}

}  // namespace
}  // namespace Quenzo::Docs
