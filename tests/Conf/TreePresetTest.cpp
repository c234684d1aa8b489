// TreePreset: a preset that is nothing but its tree.

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/TreePreset.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Quenzo::Conf {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Core::Property MakeTree() {
    Core::Property tree("preset");
    Core::Property& streams = tree.SetChild("$$STREAMS$$");
    streams.Add(Core::Property("audio"));
    streams.Add(Core::Property("video"));
    streams.Add(Core::Property("audio"));
    return tree;
}

std::vector<std::uint32_t> Indices(const TreePreset& preset, const std::string& type) {
    std::vector<std::uint32_t> indices = {99};
    preset.GetStreamIndices(type, indices);
    return indices;
}

TEST(TreePreset, KeepsItsTree) {
    const auto preset = TreePreset::Create(MakeTree());
    EXPECT_EQ(preset->GetProperty(), MakeTree());
    EXPECT_EQ(preset->GetRefCount(), 1);
}

TEST(TreePreset, FindsStreamsByType) {
    const auto preset = TreePreset::Create(MakeTree());
    EXPECT_EQ(preset->GetStreamCount(), 3U);
    EXPECT_THAT(Indices(*preset, "audio"), ElementsAre(0, 2));
    EXPECT_THAT(Indices(*preset, "video"), ElementsAre(1));
    EXPECT_THAT(Indices(*preset, "Audio"), IsEmpty());
}

TEST(TreePreset, WithoutStreamsHasNone) {
    const auto preset = TreePreset::Create(Core::Property("preset"));
    EXPECT_EQ(preset->GetStreamCount(), 0U);
    EXPECT_THAT(Indices(*preset, "audio"), IsEmpty());
}

TEST(TreePreset, ALeafIsRefused) {
    try {
        TreePreset::Create(Core::Property("preset", "mp4"));
        FAIL() << "nothing was thrown";
    } catch (const PresetException& failure) {
        EXPECT_STREQ(failure.what(), "a preset is a tree with named children, and \"preset\" is a single value");
    }
}

}  // namespace
}  // namespace Quenzo::Conf
