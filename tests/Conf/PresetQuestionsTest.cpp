// Covers what Conf/Interfaces/IPreset and Stub answer of presets: the conversions between a stream type and a kind of
// stream, and whether a preset has streams of one kind only.

#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/Stub.h>
#include <foundation/Property.h>
#include <tests/Conf/CatalogueSupport.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectRaised;
using Testing::Strings;

// A preset that is nothing but the types of its streams.
class StreamTypes : public RefCounted<IPreset> {
public:
    explicit StreamTypes(Strings types) : types_(std::move(types)) {}

    std::size_t GetStreamCount() const override { return types_.size(); }

    void GetStreamIndices(const std::string& streamType, std::vector<std::uint32_t>& indices) const override {
        indices.clear();
        for (std::size_t i = 0; i < types_.size(); ++i) {
            if (types_[i] == streamType) {
                indices.push_back(static_cast<std::uint32_t>(i));
            }
        }
    }

    const Core::Property& GetProperty() const override { return tree_; }

private:
    Strings types_;
    Core::Property tree_;
};

SP<const IPreset> PresetOf(const Strings& types) { return SP<const IPreset>(new StreamTypes(types)); }

SP<const IPreset> PresetOf(std::size_t audio, std::size_t video, std::size_t subtitles) {
    Strings types(audio, "audio");
    types.insert(types.end(), video, "video");
    types.insert(types.end(), subtitles, "subtitles_text");
    return PresetOf(types);
}

TEST(PresetQuestionsTest, OnlyQuestions_LookAtEveryStream) {
    for (std::size_t streams = 0; streams < 27; ++streams) {
        const std::size_t audio = streams / 9;
        const std::size_t video = streams / 3 % 3;
        const std::size_t subtitles = streams % 3;
        SCOPED_TRACE(testing::Message() << audio << ' ' << video << ' ' << subtitles);
        const SP<const IPreset> preset = PresetOf(audio, video, subtitles);
        EXPECT_EQ(preset->GetStreamCount(), audio + video + subtitles);
        EXPECT_EQ(IsAudioOnlyPreset(preset), audio > 0 && video + subtitles == 0);
        EXPECT_EQ(IsVideoOnlyPreset(preset), video > 0 && audio + subtitles == 0);
    }
}

void ExpectOnly(const Strings& types, bool isAudioOnly, bool isVideoOnly) {
    EXPECT_EQ(IsAudioOnlyPreset(PresetOf(types)), isAudioOnly);
    EXPECT_EQ(IsVideoOnlyPreset(PresetOf(types)), isVideoOnly);
}

TEST(PresetQuestionsTest, OnlyQuestions_OfSomePresets) {
    ExpectOnly({}, false, false);
    ExpectOnly({"audio"}, true, false);
    ExpectOnly({"video"}, false, true);
    ExpectOnly({"audio", "audio"}, true, false);
    ExpectOnly({"audio", "video"}, false, false);
    ExpectOnly({"video", "audio"}, false, false);
    ExpectOnly({"video", "subtitles_video"}, false, false);
    ExpectOnly({"subtitles_video"}, false, false);
    ExpectOnly({"subtitles_text", "subtitles_text"}, false, false);
    ExpectOnly({"Audio"}, false, false);
    ExpectOnly({"Video"}, false, false);
    ExpectOnly({""}, false, false);
    ExpectOnly(Strings(1000, "audio"), true, false);
}

// A preset from another component is called by the places of its functions: two of the destructor, and three of the
// counted reference stand before them.
TEST(PresetQuestionsTest, Functions_StandInTheirSlots) {
    using Quenzo::Testing::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&IPreset::GetStreamCount), 5U);
    EXPECT_EQ(VirtualSlot(&IPreset::GetStreamIndices), 6U);
    EXPECT_EQ(VirtualSlot(&IPreset::GetProperty), 7U);
}

TEST(PresetQuestionsTest, OnlyQuestions_DropTheirReferences) {
    const SP<const IPreset> preset = PresetOf({"audio"});
    EXPECT_TRUE(IsAudioOnlyPreset(preset));
    EXPECT_FALSE(IsVideoOnlyPreset(preset));
    EXPECT_EQ(preset->GetRefCount(), 1);
}

TEST(PresetQuestionsTest, OnlyQuestions_OfNoPresetThrow) {
    ExpectRaised<std::invalid_argument>([] { IsAudioOnlyPreset(nullptr); }, "preset is NULL",
                                        "Conf/Interfaces/Stub.cpp", "(");
    ExpectRaised<std::invalid_argument>([] { IsVideoOnlyPreset(nullptr); }, "preset is NULL",
                                        "Conf/Interfaces/Stub.cpp", "(");
}

// A failure of the preset itself comes out as it is.
class BrokenPreset : public StreamTypes {
public:
    BrokenPreset() : StreamTypes({}) {}

    void GetStreamIndices(const std::string& /*streamType*/, std::vector<std::uint32_t>& /*indices*/) const override {
        throw std::range_error("from outside");
    }
};

TEST(PresetQuestionsTest, OnlyQuestions_PassOnWhatThePresetRaises) {
    const SP<const IPreset> preset(new BrokenPreset);
    EXPECT_THROW(IsAudioOnlyPreset(preset), std::range_error);
    EXPECT_THROW(IsVideoOnlyPreset(preset), std::range_error);
    EXPECT_EQ(preset->GetRefCount(), 1);
}

TEST(PresetQuestionsTest, Conversions_GoBothWays) {
    const auto expectPair = [](const std::string& streamType, MediaType type, std::int32_t code) {
        EXPECT_EQ(static_cast<std::int32_t>(type), code);
        EXPECT_EQ(IPreset::MediaTypeFromPresetStreamType(streamType), type);
        EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(type), streamType);
        EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(IPreset::MediaTypeFromPresetStreamType(streamType)),
                  streamType);
    };
    expectPair("video", MediaType::Video, 1);
    expectPair("audio", MediaType::Audio, 2);
    expectPair("subtitles_video", MediaType::SubtitlesVideo, 3);
    expectPair("subtitles_text", MediaType::SubtitlesText, 4);
}

TEST(PresetQuestionsTest, Conversions_UseTheConstants) {
    EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(MediaType{1}), IPreset::STREAM_TYPE_VIDEO);
    EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(MediaType{2}), IPreset::STREAM_TYPE_AUDIO);
    EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(MediaType{3}), IPreset::STREAM_TYPE_SUBTITLES_VIDEO);
    EXPECT_EQ(IPreset::PresetStreamTypeFormMediaType(MediaType{4}), IPreset::STREAM_TYPE_SUBTITLES_TEXT);
}

void ExpectNoStreamType(const std::string& text) {
    SCOPED_TRACE(text.substr(0, 100));
    ExpectRaised<std::logic_error>([&text] { IPreset::MediaTypeFromPresetStreamType(text); },
                                   "Unknown preset stream type", "Conf/Interfaces/IPreset.cpp", "(");
}

TEST(PresetQuestionsTest, MediaTypeFromPresetStreamType_OfAnotherTextThrows) {
    for (const char* streamType : {"audio", "video", "subtitles_video", "subtitles_text"}) {
        for (const std::string& text : Testing::Lookalikes(streamType)) {
            if (text != streamType) {
                ExpectNoStreamType(text);
            }
        }
    }
    ExpectNoStreamType("Audio");
    ExpectNoStreamType("VIDEO");
    ExpectNoStreamType("subtitles");
    ExpectNoStreamType("subtitles-text");
    ExpectNoStreamType("none");
    ExpectNoStreamType("1");
    ExpectNoStreamType("");
    ExpectNoStreamType(std::string(100000, 'a'));
}

void ExpectNoMediaType(std::int32_t code) {
    SCOPED_TRACE(code);
    ExpectRaised<std::logic_error>([code] { IPreset::PresetStreamTypeFormMediaType(MediaType{code}); },
                                   "Unknown media type", "Conf/Interfaces/IPreset.cpp", "(");
}

TEST(PresetQuestionsTest, PresetStreamTypeFormMediaType_OutsideTheKindsThrows) {
    ExpectNoMediaType(0);
    ExpectNoMediaType(-1);
    ExpectNoMediaType(5);
    ExpectNoMediaType(6);
    ExpectNoMediaType(257);
    ExpectNoMediaType(std::numeric_limits<std::int32_t>::max());
    ExpectNoMediaType(std::numeric_limits<std::int32_t>::min());
}

}  // namespace
}  // namespace Quenzo::Conf
