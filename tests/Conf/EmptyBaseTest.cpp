// Covers that the constants, which every owner inherits, take no room and move nothing: objects are as large as their
// fields, and an owner is at the same address as what it derives from.

#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/IPropertyConstraint.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace Quenzo::Conf::Testing {
namespace {

constexpr std::size_t kTable = sizeof(void*);

// A tree, and beside it what each class adds.
static_assert(sizeof(IRefCountable) == kTable);
static_assert(sizeof(IFormat) == kTable + sizeof(Core::Property));
static_assert(sizeof(IFormatCodec) ==
              sizeof(IFormat) + sizeof(RefCountImpl) + sizeof(SP<const IBlob>) + sizeof(std::shared_ptr<void>));
static_assert(sizeof(IPreset) == kTable);
static_assert(sizeof(ITranscodingMetaGraph) == kTable + sizeof(RefCountImpl) + sizeof(void*));

static_assert(std::is_empty_v<AudioVocabulary> && std::is_empty_v<CodecVocabulary>);
static_assert(std::is_empty_v<FileVocabulary> && std::is_empty_v<FormatVocabulary>);
static_assert(std::is_empty_v<GraphVocabulary> && std::is_empty_v<PresetVocabulary>);
static_assert(std::is_empty_v<SubtitleVocabulary> && std::is_empty_v<VideoVocabulary>);

static_assert(std::is_base_of_v<FormatVocabulary, IFormat>);
static_assert(std::is_base_of_v<CodecVocabulary, IFormatCodec> && std::is_base_of_v<FormatVocabulary, IFormatCodec>);
static_assert(std::is_base_of_v<PresetVocabulary, IPreset>);
static_assert(std::is_base_of_v<GraphVocabulary, ITranscodingMetaGraph>);

template <typename Base, typename Object>
bool IsAtTheStart(const Object& object) {
    const Base& base = object;
    return static_cast<const void*>(&base) == static_cast<const void*>(&object);
}

TEST(EmptyBaseTest, Owners_AreAtTheAddressOfTheirBases) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    EXPECT_TRUE(IsAtTheStart<IFormat>(*codec));
    EXPECT_TRUE(IsAtTheStart<IRefCountable>(*codec));
    const SP<ITranscodingMetaGraph> graph = ITranscodingMetaGraph::Create();
    EXPECT_TRUE(IsAtTheStart<IRefCountable>(*graph));
}

// The constants are the owner's own names.
TEST(EmptyBaseTest, Owners_ShowTheirConstants) {
    EXPECT_EQ(IFormat::TAG_METADATA, "metadata");
    EXPECT_EQ(IFormatCodec::TAG_STREAM_ID, "stream_id");
    EXPECT_EQ(IFormatCodec::TAG_METADATA, "metadata");
    EXPECT_EQ(IPreset::KEY_STREAMS, "$$STREAMS$$");
    EXPECT_EQ(ITranscodingMetaGraph::MERGE_WITH_INDEX, "$$MERGE_WITH_INDEX$$");
    EXPECT_EQ(&ITranscodingMetaGraph::KEY_SOURCE, &GraphVocabulary::KEY_SOURCE);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
