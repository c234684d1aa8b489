// Covers the description of an audio stream: channel layout and sample format as the texts of their tables, the sample
// info, what a failure half-way leaves, the block alignment, and the language in the metadata.

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/Conf/TableSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Integers = std::numeric_limits<std::int32_t>;
using LongIntegers = std::numeric_limits<long long>;

constexpr const char* kNoSuchLayout = "Provided ChannelLayout is not found in list";
constexpr const char* kNoSuchLayoutText = "Provided Channel TextID is not found in list";
constexpr const char* kNoSuchFormat = "Provided sample format is not found in list";
constexpr const char* kNoSuchFormatText = "Provided sample textId is not found in list";

// The texts of the layouts 0 to 28.
constexpr std::array<const char*, 29> kLayouts = {"UNKNOWN",       "MONO",
                                                  "STEREO",        "2POINT1",
                                                  "2_1",           "SURROUND",
                                                  "3POINT1",       "4POINT0",
                                                  "4POINT1",       "2_2",
                                                  "QUAD",          "5POINT0",
                                                  "5POINT1",       "5POINT0_BACK",
                                                  "5POINT1_BACK",  "6POINT0",
                                                  "6POINT0_FRONT", "HEXAGONAL",
                                                  "6POINT1",       "6POINT1_BACK",
                                                  "6POINT1_FRONT", "7POINT0",
                                                  "7POINT0_FRONT", "7POINT1",
                                                  "7POINT1_WIDE",  "7POINT1_WIDE_BACK",
                                                  "OCTAGONAL",     "HEXADECAGONAL",
                                                  "STEREO_DOWNMIX"};

struct Format {
    const char* text;
    int bits;
};

// The sample formats -1 to 9.
constexpr std::array<Format, 11> kFormats = {{{"SAMPLE_FMT_NONE", 0},
                                              {"SAMPLE_FMT_U8", 8},
                                              {"SAMPLE_FMT_S16", 16},
                                              {"SAMPLE_FMT_S32", 32},
                                              {"SAMPLE_FMT_FLT", 32},
                                              {"SAMPLE_FMT_DBL", 64},
                                              {"SAMPLE_FMT_U8P", 8},
                                              {"SAMPLE_FMT_S16P", 16},
                                              {"SAMPLE_FMT_S32P", 32},
                                              {"SAMPLE_FMT_FLTP", 32},
                                              {"SAMPLE_FMT_DBLP", 64}}};

SP<IFormatCodecAudio> NewAudio() { return IFormatCodecAudio::Create(); }

Property AudioTree(const std::vector<Property>& more) { return StreamTree("format_codec_audio", more); }

SP<IFormatCodecAudio> AudioWith(const std::vector<Property>& more) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetProperty(AudioTree(more));
    return audio;
}

Property SampleTree(const char* format, int bits, const char* layout, int rate) {
    return AudioTree({Property("sample_format", format), Property("bits_per_sample", bits), Property("layout", layout),
                      Property("sample_rate", rate)});
}

SampleInfo MakeInfo(SampleFormats format, int rate, ChannelLayout layout) {
    SampleInfo info;
    info.Init(format, rate, layout);
    return info;
}

TEST(FormatCodecAudioTest, SetChannelLayout_StoresTheTextOfEveryLayout) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    for (std::size_t i = 0; i < kLayouts.size(); ++i) {
        const ChannelLayout layout{static_cast<std::int32_t>(i)};
        audio->SetChannelLayout(layout);
        EXPECT_EQ(audio->GetProperty(), AudioTree({Property("layout", kLayouts.at(i))}));
        EXPECT_EQ(audio->GetChannelLayout(), layout) << kLayouts.at(i);
    }
    audio->SetChannelLayout(ChannelLayout::_5POINT1);
    EXPECT_EQ(audio->GetProperty(), AudioTree({Property("layout", "5POINT1")}));
}

TEST(FormatCodecAudioTest, SetChannelLayout_ReplacesInPlace) {
    const SP<IFormatCodecAudio> audio = AudioWith({Property("layout", 2), Property("bitrate", 5)});
    audio->SetChannelLayout(ChannelLayout::STEREO);
    EXPECT_EQ(audio->GetProperty(), AudioTree({Property("layout", "STEREO"), Property("bitrate", 5)}));
}

TEST(FormatCodecAudioTest, SetChannelLayout_OfAnUnknownValueThrowsAndChangesNothing) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetChannelLayout(ChannelLayout::MONO);
    for (const std::int32_t value : {-1, 29, Integers::min(), Integers::max()}) {
        ExpectFormatFailure([&] { audio->SetChannelLayout(ChannelLayout{value}); }, kNoSuchLayout);
    }
    EXPECT_EQ(audio->GetProperty(), AudioTree({Property("layout", "MONO")}));
}

ChannelLayout LayoutOf(const std::string& text) { return AudioWith({Property("layout", text)})->GetChannelLayout(); }

TEST(FormatCodecAudioTest, GetChannelLayout_TellsTextsThatLookAlikeApart) {
    EXPECT_EQ(LayoutOf("2_1"), ChannelLayout::_2_1);
    EXPECT_EQ(LayoutOf("2POINT1"), ChannelLayout::_2POINT1);
    EXPECT_EQ(LayoutOf("7POINT1_WIDE"), ChannelLayout::_7POINT1_WIDE);
    EXPECT_EQ(LayoutOf("7POINT1_WIDE_BACK"), ChannelLayout::_7POINT1_WIDE_BACK);
    EXPECT_EQ(LayoutOf(IFormatCodecAudio::TAG_CH_LAYOUT_5POINT1), ChannelLayout::_5POINT1);
}

TEST(FormatCodecAudioTest, GetChannelLayout_OfAnotherTextThrows) {
    using namespace std::string_literals;
    for (const std::string& text :
         {""s, "stereo"s, "Stereo"s, "STEREO "s, " STEREO"s, "STERE"s, "2"s, "_5POINT1"s, "STEREO\0"s, "5.1"s}) {
        ExpectFormatFailure([&] { LayoutOf(text); }, kNoSuchLayoutText);
    }
}

TEST(FormatCodecAudioTest, GetChannelLayout_OfAMissingOrWrongChildThrows) {
    ExpectMissing([] { NewAudio()->GetChannelLayout(); }, "format_codec_audio", "layout");
    ExpectWrongType([] { AudioWith({Property("layout", 2)})->GetChannelLayout(); }, "layout", PropertyTypes::Int64,
                    "GetString");
}

TEST(FormatCodecAudioTest, SetSampleFormat_StoresTheTextAndThenTheBitsOfEveryFormat) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    for (std::size_t i = 0; i < kFormats.size(); ++i) {
        const SampleFormats format{static_cast<std::int32_t>(i) - 1};
        const auto& [text, bits] = kFormats.at(i);
        audio->SetSampleFormat(format);
        EXPECT_EQ(audio->GetProperty(),
                  AudioTree({Property("sample_format", text), Property("bits_per_sample", bits)}));
        EXPECT_EQ(audio->GetSampleFormat(), format) << text;
    }
    audio->SetSampleFormat(SampleFormats::SAMPLE_FMT_FLTP);
    EXPECT_EQ(audio->GetProperty(),
              AudioTree({Property("sample_format", "SAMPLE_FMT_FLTP"), Property("bits_per_sample", 32)}));
}

TEST(FormatCodecAudioTest, SetSampleFormat_ReplacesInPlace) {
    const SP<IFormatCodecAudio> audio =
        AudioWith({Property("bits_per_sample", "x"), Property("bitrate", 5), Property("sample_format")});
    audio->SetSampleFormat(SampleFormats::SAMPLE_FMT_DBL);
    EXPECT_EQ(audio->GetProperty(), AudioTree({Property("bits_per_sample", 64), Property("bitrate", 5),
                                               Property("sample_format", "SAMPLE_FMT_DBL")}));
}

TEST(FormatCodecAudioTest, SetSampleFormat_OfAnUnknownValueThrowsAndChangesNothing) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    for (const std::int32_t value : {-2, 10, Integers::min(), Integers::max()}) {
        ExpectFormatFailure([&] { audio->SetSampleFormat(SampleFormats{value}); }, kNoSuchFormat);
    }
    EXPECT_EQ(audio->GetProperty(), AudioTree({}));
}

TEST(FormatCodecAudioTest, GetSampleFormat_ReadsTheTextWhateverTheBitsSay) {
    const SP<IFormatCodecAudio> audio =
        AudioWith({Property("bits_per_sample", 8), Property("sample_format", "SAMPLE_FMT_S32P")});
    EXPECT_EQ(audio->GetSampleFormat(), SampleFormats::SAMPLE_FMT_S32P);
}

TEST(FormatCodecAudioTest, GetSampleFormat_OfAnotherTextThrows) {
    for (const std::string text : {"", "S16", "sample_fmt_s16", "SAMPLE_FMT_S16 ", "SAMPLE_FMT_S1", "1"}) {
        ExpectFormatFailure([&] { AudioWith({Property("sample_format", text)})->GetSampleFormat(); },
                            kNoSuchFormatText);
    }
}

TEST(FormatCodecAudioTest, GetSampleFormat_OfAMissingOrWrongChildThrows) {
    ExpectMissing([] { NewAudio()->GetSampleFormat(); }, "format_codec_audio", "sample_format");
    ExpectWrongType([] { AudioWith({Property("sample_format", 1)})->GetSampleFormat(); }, "sample_format",
                    PropertyTypes::Int64, "GetString");
}

TEST(FormatCodecAudioTest, SetSampleInfo_StoresFormatBitsLayoutRate) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetSampleInfo(MakeInfo(SampleFormats::SAMPLE_FMT_S16, 44100, ChannelLayout::STEREO));
    EXPECT_EQ(audio->GetProperty(), SampleTree("SAMPLE_FMT_S16", 16, "STEREO", 44100));
    audio->SetSampleInfo(MakeInfo(SampleFormats::SAMPLE_FMT_DBLP, Integers::max(), ChannelLayout::_7POINT1));
    EXPECT_EQ(audio->GetProperty(), SampleTree("SAMPLE_FMT_DBLP", 64, "7POINT1", 2147483647));
    audio->SetSampleInfo(MakeInfo(SampleFormats::SAMPLE_FMT_U8, Integers::min(), ChannelLayout::MONO));
    EXPECT_EQ(audio->GetProperty(), SampleTree("SAMPLE_FMT_U8", 8, "MONO", Integers::min()));
}

TEST(FormatCodecAudioTest, SetSampleInfo_OfAnUnsetInfoIsReadBack) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetSampleInfo(SampleInfo());
    EXPECT_EQ(audio->GetProperty(), SampleTree("SAMPLE_FMT_NONE", 0, "UNKNOWN", -1));
    EXPECT_EQ(audio->GetSampleInfo(), SampleInfo());
}

// The pointers of an info are open to everybody: only the values of its rows count, and the tables say the rest.
TEST(FormatCodecAudioTest, SetSampleInfo_TakesTheTextsFromTheTables) {
    SampleFmtRecord format = SampleFmtRecord::Find(SampleFormats::SAMPLE_FMT_S16);
    format.textId = "forged";
    format.bits = 99;
    const std::string forged = "forged";
    const LayoutRecord layout{ChannelLayout::QUAD, 99, forged};
    SampleInfo info;
    info.format = &format;
    info.layout = &layout;
    info.sampleRate = 8000;
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetSampleInfo(info);
    EXPECT_EQ(audio->GetProperty(), SampleTree("SAMPLE_FMT_S16", 16, "QUAD", 8000));
}

TEST(FormatCodecAudioTest, SetSampleInfo_OfAnUnknownFormatThrowsAndChangesNothing) {
    SampleFmtRecord format = SampleFmtRecord::Find(SampleFormats::SAMPLE_FMT_S16);
    format.format = SampleFormats{10};
    SampleInfo info = MakeInfo(SampleFormats::SAMPLE_FMT_S16, 8000, ChannelLayout::MONO);
    info.format = &format;
    const SP<IFormatCodecAudio> audio = NewAudio();
    ExpectFormatFailure([&] { audio->SetSampleInfo(info); }, kNoSuchFormat);
    EXPECT_EQ(audio->GetProperty(), AudioTree({}));
}

TEST(FormatCodecAudioTest, SetSampleInfo_OfAnUnknownLayoutThrowsAndKeepsTheFormat) {
    const LayoutRecord layout{ChannelLayout{29}, 2, LayoutRecord::Find(ChannelLayout::STEREO).textId};
    SampleInfo info = MakeInfo(SampleFormats::SAMPLE_FMT_S32, 8000, ChannelLayout::MONO);
    info.layout = &layout;
    const SP<IFormatCodecAudio> audio = NewAudio();
    ExpectFormatFailure([&] { audio->SetSampleInfo(info); }, kNoSuchLayout);
    EXPECT_EQ(audio->GetProperty(),
              AudioTree({Property("sample_format", "SAMPLE_FMT_S32"), Property("bits_per_sample", 32)}));
    const SP<IFormatCodecAudio> used = NewAudio();
    used->SetSampleInfo(MakeInfo(SampleFormats::SAMPLE_FMT_U8, 44100, ChannelLayout::STEREO));
    ExpectFormatFailure([&] { used->SetSampleInfo(info); }, kNoSuchLayout);
    EXPECT_EQ(used->GetProperty(), SampleTree("SAMPLE_FMT_S32", 32, "STEREO", 44100));
}

SampleInfo InfoOf(const Property& rate, const Property& format, const Property& layout) {
    return AudioWith({rate, format, layout})->GetSampleInfo();
}

TEST(FormatCodecAudioTest, GetSampleInfo_ReadsAllThree) {
    const SampleInfo info =
        InfoOf(Property("sample_rate", 48000), Property("sample_format", "SAMPLE_FMT_FLTP"), Property("layout", "2_2"));
    EXPECT_EQ(info.sampleRate, 48000);
    EXPECT_EQ(info.format, &SampleFmtRecord::Find(SampleFormats::SAMPLE_FMT_FLTP));
    EXPECT_EQ(info.layout, &LayoutRecord::Find(ChannelLayout::_2_2));
}

TEST(FormatCodecAudioTest, GetSampleInfo_KeepsTheLow32BitsOfTheRate) {
    const auto read = [](long long rate) {
        return InfoOf(Property("sample_rate", rate), Property("sample_format", "SAMPLE_FMT_U8"),
                      Property("layout", "MONO"))
            .sampleRate;
    };
    EXPECT_EQ(read(4294967296 + 44100), 44100);
    EXPECT_EQ(read(4294967295), -1);
    EXPECT_EQ(read(2147483648), Integers::min());
    EXPECT_EQ(read(LongIntegers::min()), 0);
}

TEST(FormatCodecAudioTest, GetSampleInfo_OfMissingOrWrongChildrenThrows) {
    const Property rate("sample_rate", 8000);
    const Property format("sample_format", "SAMPLE_FMT_U8");
    const Property layout("layout", "MONO");
    const Property other("other", 1);
    ExpectMissing([&] { InfoOf(other, format, layout); }, "format_codec_audio", "sample_rate");
    ExpectMissing([&] { InfoOf(rate, other, layout); }, "format_codec_audio", "sample_format");
    ExpectMissing([&] { InfoOf(rate, format, other); }, "format_codec_audio", "layout");
    ExpectWrongType([&] { InfoOf(Property("sample_rate", "8000"), format, layout); }, "sample_rate",
                    PropertyTypes::String, "GetInt64");
    ExpectWrongType([&] { InfoOf(rate, Property("sample_format", 0), layout); }, "sample_format", PropertyTypes::Int64,
                    "GetString");
    ExpectWrongType([&] { InfoOf(rate, format, Property("layout", true)); }, "layout", PropertyTypes::Bool,
                    "GetString");
}

TEST(FormatCodecAudioTest, GetSampleInfo_OfUnknownTextsThrows) {
    const Property rate("sample_rate", 8000);
    const Property noFormat("sample_format", "x");
    const Property noLayout("layout", "y");
    ExpectFormatFailure([&] { InfoOf(rate, noFormat, Property("layout", "MONO")); }, kNoSuchFormatText);
    ExpectFormatFailure([&] { InfoOf(rate, Property("sample_format", "SAMPLE_FMT_U8"), noLayout); }, kNoSuchLayoutText);
    // All are read before any is looked up, and the format is looked up first.
    ExpectFormatFailure([&] { InfoOf(rate, noFormat, noLayout); }, kNoSuchFormatText);
    ExpectMissing([&] { InfoOf(rate, noFormat, Property("other", 1)); }, "format_codec_audio", "layout");
}

RC_GTEST_PROP(FormatCodecAudioTest, SetSampleInfo_IsReadBack, (std::int32_t rate)) {
    const SampleFormats format{*rc::gen::inRange(-1, 10)};
    const ChannelLayout layout{*rc::gen::inRange(0, 29)};
    const SampleInfo info = MakeInfo(format, rate, layout);
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetSampleInfo(info);
    RC_ASSERT(audio->GetSampleInfo() == info);
    RC_ASSERT(audio->GetSampleFormat() == format);
    RC_ASSERT(audio->GetChannelLayout() == layout);
}

TEST(FormatCodecAudioTest, GetBlockAlignment_IsZeroWhenMissing) { EXPECT_EQ(NewAudio()->GetBlockAlignment(), 0); }

TEST(FormatCodecAudioTest, SetBlockAlignment_IsReadBack) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    for (const int alignment : {4, 0, -1, Integers::min(), Integers::max()}) {
        audio->SetBlockAlignment(alignment);
        EXPECT_EQ(audio->GetProperty(), AudioTree({Property("block_alignment", alignment)}));
        EXPECT_EQ(audio->GetBlockAlignment(), alignment);
    }
}

TEST(FormatCodecAudioTest, GetBlockAlignment_KeepsTheLow32Bits) {
    const auto read = [](long long number) {
        return AudioWith({Property("block_alignment", number)})->GetBlockAlignment();
    };
    EXPECT_EQ(read(4294967300), 4);
    EXPECT_EQ(read(4294967295), -1);
    EXPECT_EQ(read(-4294967297), -1);
    EXPECT_EQ(read(LongIntegers::min()), 0);
}

TEST(FormatCodecAudioTest, GetBlockAlignment_OfAWrongTypeThrows) {
    ExpectWrongType([] { AudioWith({Property("block_alignment", "4")})->GetBlockAlignment(); }, "block_alignment",
                    PropertyTypes::String, "GetInt64");
}

Property LanguageTree(const Property& metadata) {
    Property tree = AudioTree({});
    tree.SetChild("metadata", metadata);
    return tree;
}

TEST(FormatCodecAudioTest, GetLanguage_OfANewDescriptionIsEmpty) {
    EXPECT_FALSE(NewAudio()->ExistsLanguage());
    EXPECT_EQ(NewAudio()->GetLanguage(), "");
}

TEST(FormatCodecAudioTest, SetLanguage_StoresItInTheMetadata) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetLanguage("eng");
    EXPECT_EQ(audio->GetProperty(), LanguageTree(Tree("metadata", {Property("language", "eng")})));
    EXPECT_TRUE(audio->ExistsLanguage());
    EXPECT_EQ(audio->GetLanguage(), "eng");
    audio->SetLanguage("de");
    EXPECT_EQ(audio->GetMetadata(), Tree("metadata", {Property("language", "de")}));
    EXPECT_EQ(audio->GetLanguage(), "de");
}

TEST(FormatCodecAudioTest, SetLanguage_OfAnEmptyTextExists) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetLanguage("");
    EXPECT_TRUE(audio->ExistsLanguage());
    EXPECT_EQ(audio->GetLanguage(), "");
    EXPECT_EQ(audio->GetMetadata(), Tree("metadata", {Property("language", "")}));
}

TEST(FormatCodecAudioTest, SetLanguage_LeavesTheOtherMetadata) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetMetadata(Tree("metadata", {Property("title", "x"), Property("language", 7), Property("comment", "y")}));
    audio->SetLanguage("fra");
    EXPECT_EQ(audio->GetMetadata(),
              Tree("metadata", {Property("title", "x"), Property("language", "fra"), Property("comment", "y")}));
}

TEST(FormatCodecAudioTest, SetLanguage_AfterTheMetadataWasReplaced) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetLanguage("eng");
    audio->SetMetadata(Property("metadata"));
    EXPECT_FALSE(audio->ExistsLanguage());
    EXPECT_EQ(audio->GetLanguage(), "");
    audio->SetLanguage("eng");
    EXPECT_EQ(audio->GetMetadata(), Tree("metadata", {Property("language", "eng")}));
}

TEST(FormatCodecAudioTest, GetLanguage_LooksIntoTheMetadataOnly) {
    const SP<IFormatCodecAudio> audio =
        AudioWith({Property("language", "eng"), Tree("more", {Property("language", "eng")})});
    audio->SetStreamMetadata(Tree("stream_metadata", {Property("language", "eng")}));
    EXPECT_FALSE(audio->ExistsLanguage());
    EXPECT_EQ(audio->GetLanguage(), "");
    audio->SetMetadata(Tree("metadata", {Property("LANGUAGE", "eng")}));
    EXPECT_FALSE(audio->ExistsLanguage());
}

TEST(FormatCodecAudioTest, SetLanguage_IntoMetadataThatIsALeafThrowsAndChangesNothing) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetMetadata(Property("metadata", "language"));
    EXPECT_FALSE(audio->ExistsLanguage());
    EXPECT_EQ(audio->GetLanguage(), "");
    Quenzo::Testing::ExpectPropertyFailure<Core::MethodIsNotApplicable>(
        [&] { audio->SetLanguage("eng"); }, {"metadata", PropertyTypes::String, "SetChildT"});
    EXPECT_EQ(audio->GetProperty(), LanguageTree(Property("metadata", "language")));
}

TEST(FormatCodecAudioTest, GetLanguage_OfAWrongTypeThrows) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetMetadata(Tree("metadata", {Property("language", 49)}));
    EXPECT_TRUE(audio->ExistsLanguage());
    ExpectWrongType([&] { audio->GetLanguage(); }, "language", PropertyTypes::Int64, "GetString");
}

// A class of its own, which can take the metadata away and has another idea of languages.
class OtherAudio : public IFormatCodecAudio {
public:
    std::string GetLanguage() const override { return "<" + IFormatCodecAudio::GetLanguage() + ">"; }
    void SetLanguage(const std::string& language) override { IFormatCodecAudio::SetLanguage(language + "!"); }

    using IFormatCodecAudio::Tree;
};

TEST(FormatCodecAudioTest, Language_WithoutMetadataIsMissing) {
    const SP<OtherAudio> audio(new OtherAudio());
    audio->Tree().RemoveChild("metadata");
    EXPECT_FALSE(audio->ExistsLanguage());
    EXPECT_EQ(audio->IFormatCodecAudio::GetLanguage(), "");
    ExpectMissing([&] { audio->IFormatCodecAudio::SetLanguage("eng"); }, "format_codec_audio", "metadata");
}

TEST(FormatCodecAudioTest, Language_IsVirtual) {
    const SP<IFormatCodecAudio> audio(new OtherAudio());
    audio->SetLanguage("eng");
    EXPECT_EQ(audio->GetLanguage(), "<eng!>");
    EXPECT_EQ(audio->GetMetadata(), Tree("metadata", {Property("language", "eng!")}));
}

TEST(FormatCodecAudioTest, Clone_HasTheLanguage) {
    const SP<IFormatCodecAudio> audio = NewAudio();
    audio->SetLanguage("eng");
    const SP<IFormatCodecAudio> clone = audio->Clone();
    EXPECT_EQ(clone->GetLanguage(), "eng");
    clone->SetLanguage("fra");
    EXPECT_EQ(audio->GetLanguage(), "eng");
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
