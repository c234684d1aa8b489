// Covers the constants of Conf/Interfaces/Vocabulary/ and of Conf/Interfaces/ImplNames.h. The expected values stand in
// VocabularyRows/, one file per owner, written out in full and independently of the library's own row files.

#include <Conf/Interfaces/ImplNames.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <Conf/Interfaces/Vocabulary/ConstraintVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf {
namespace {

namespace ImplNames = Quenzo::Proc::ImplNames;

static_assert(std::is_empty_v<FormatVocabulary>);
static_assert(std::is_empty_v<CodecVocabulary>);
static_assert(std::is_empty_v<VideoVocabulary>);
static_assert(std::is_empty_v<AudioVocabulary>);
static_assert(std::is_empty_v<SubtitleVocabulary>);
static_assert(std::is_empty_v<FileVocabulary>);
static_assert(std::is_empty_v<PresetVocabulary>);
static_assert(std::is_empty_v<ConstraintVocabulary>);
static_assert(std::is_empty_v<GraphVocabulary>);

template <class T>
constexpr bool isText = std::is_same_v<T, const std::string>;
template <class T>
constexpr bool isNumber = std::is_same_v<T, const long long>;

static_assert(isNumber<decltype(CodecVocabulary::DEFAULT_STREAM_ID)>);
static_assert(isNumber<decltype(CodecVocabulary::MIN_QUALITY)>);
static_assert(isNumber<decltype(CodecVocabulary::MAX_QUALITY)>);
static_assert(isNumber<decltype(VideoVocabulary::MAX_VIDEO_BITRATE)>);
static_assert(isNumber<decltype(FileVocabulary::DISK_SIZE_DVD_MINI)>);
static_assert(isNumber<decltype(FileVocabulary::DISK_SIZE_DVD_STANDARD)>);
static_assert(isNumber<decltype(FileVocabulary::DISK_SIZE_DVD_DOUBLE_LAYER)>);

static_assert(CodecVocabulary::DEFAULT_STREAM_ID == -1);
static_assert(CodecVocabulary::MIN_QUALITY == 1);
static_assert(CodecVocabulary::MAX_QUALITY == 32);
static_assert(VideoVocabulary::MAX_VIDEO_BITRATE == 500000000);
static_assert(FileVocabulary::DISK_SIZE_DVD_MINI == 1400000000);
static_assert(FileVocabulary::DISK_SIZE_DVD_STANDARD == 4700000000);
static_assert(FileVocabulary::DISK_SIZE_DVD_DOUBLE_LAYER == 8500000000);

// What this test expects of one string constant.
struct Expectation {
    std::string_view name;
    const std::string* constant;
    std::string_view value;
};

constexpr auto formatExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Format.inc>
});
constexpr auto codecExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Codec.inc>
});
constexpr auto videoExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Video.inc>
});
constexpr auto audioExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Audio.inc>
});
constexpr auto subtitleExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Subtitle.inc>
});
constexpr auto fileExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/File.inc>
});
constexpr auto presetExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Preset.inc>
});
constexpr auto constraintExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Constraint.inc>
});
constexpr auto graphExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/Graph.inc>
});
constexpr auto implNamesExpectations = std::to_array<Expectation>({
#include <tests/Conf/VocabularyRows/ImplNames.inc>
});

enum class Kind { Key, Word, Codec, CodecAs, Format, Number };
enum class Stored { Bool, Int64, Ratio, String, Node, Any };

// One row of the library's own row files.
struct Definition {
    Kind kind;
    std::string_view name;
    std::string_view value;
    Stored stored;
    std::string_view meaning;
    bool typeIsRight;
};

// Collect.inc stands before each row file because the row file undefines what it defines.
// NOLINTBEGIN(readability-duplicate-include)
#define QUENZO_OWNER FormatVocabulary
constexpr auto formatDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/FormatKeys.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER CodecVocabulary
constexpr auto codecDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/CodecIds.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/CodecKeys.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER VideoVocabulary
constexpr auto videoDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/VideoKeys.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER AudioVocabulary
constexpr auto audioDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/AudioKeys.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER SubtitleVocabulary
constexpr auto subtitleDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/SubtitleKeys.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER FileVocabulary
constexpr auto fileDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/FileFormats.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/FileKeys.def>

#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/FileWords.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER PresetVocabulary
constexpr auto presetDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/Preset.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER ConstraintVocabulary
constexpr auto constraintDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/Constraint.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER GraphVocabulary
constexpr auto graphDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/Graph.def>
});
#undef QUENZO_OWNER

#define QUENZO_OWNER ImplNames
constexpr auto implNamesDefinitions = std::to_array<Definition>({
#include <tests/Conf/VocabularyRows/Collect.inc>

#include <Conf/Interfaces/Vocabulary/ImplNames.def>
});
#undef QUENZO_OWNER
// NOLINTEND(readability-duplicate-include)

struct Owner {
    std::string_view name;
    std::size_t texts;
    std::size_t numbers;
    std::span<const Expectation> expectations;
    std::span<const Definition> definitions;
};

constexpr auto owners = std::to_array<Owner>({
    {"IFormat", 1, 0, formatExpectations, formatDefinitions},
    {"IFormatCodec", 35, 3, codecExpectations, codecDefinitions},
    {"IFormatCodecVideo", 339, 1, videoExpectations, videoDefinitions},
    {"IFormatCodecAudio", 181, 0, audioExpectations, audioDefinitions},
    {"IFormatCodecSubtitle", 30, 0, subtitleExpectations, subtitleDefinitions},
    {"IFormatFile", 281, 3, fileExpectations, fileDefinitions},
    {"IPreset", 25, 0, presetExpectations, presetDefinitions},
    {"IPropertyConstraint", 1, 0, constraintExpectations, constraintDefinitions},
    {"ITranscodingMetaGraph", 10, 0, graphExpectations, graphDefinitions},
    {"ImplNames", 36, 0, implNamesExpectations, implNamesDefinitions},
});

const Owner& FindOwner(std::string_view name) {
    for (const Owner& owner : owners) {
        if (owner.name == name) {
            return owner;
        }
    }
    throw std::invalid_argument(std::string(name));
}

// The constant's name without its owner: TAG_WIDTH for IFormatCodecVideo::TAG_WIDTH.
std::string_view Unqualified(std::string_view name) { return name.substr(name.find("::") + 2); }

std::vector<Expectation> AllExpectations() {
    std::vector<Expectation> all;
    for (const Owner& owner : owners) {
        all.insert(all.end(), owner.expectations.begin(), owner.expectations.end());
    }
    return all;
}

std::vector<Definition> DefinitionsOf(const std::vector<std::string_view>& ownerNames) {
    std::vector<Definition> rows;
    for (const std::string_view name : ownerNames) {
        const std::span<const Definition> more = FindOwner(name).definitions;
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

std::vector<std::string_view> Repeated(const std::vector<std::string_view>& texts) {
    std::set<std::string_view> seen;
    std::vector<std::string_view> repeated;
    for (const std::string_view text : texts) {
        if (!seen.insert(text).second) {
            repeated.push_back(text);
        }
    }
    return repeated;
}

const std::vector<std::string_view> none;

TEST(VocabularyTest, EveryConstant_HasItsValueByteForByte) {
    for (const Expectation& expected : AllExpectations()) {
        EXPECT_EQ(*expected.constant, expected.value) << expected.name;
    }
}

TEST(VocabularyTest, EveryConstant_IsDefinedAndExpectedOnce) {
    for (const Owner& owner : owners) {
        std::vector<std::string_view> defined;
        for (const Definition& definition : owner.definitions) {
            if (definition.kind != Kind::Number) {
                defined.push_back(definition.name);
            }
        }
        std::vector<std::string_view> expected;
        for (const Expectation& expectation : owner.expectations) {
            EXPECT_EQ(expectation.name.substr(0, expectation.name.find("::")), owner.name);
            expected.push_back(Unqualified(expectation.name));
        }
        // The rows stand in the order of the catalogues that are made from them.
        std::sort(defined.begin(), defined.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(defined, expected) << owner.name;
    }
}

TEST(VocabularyTest, EveryOwner_HasItsNumberOfConstants) {
    for (const Owner& owner : owners) {
        const auto numbers = std::count_if(owner.definitions.begin(), owner.definitions.end(),
                                           [](const Definition& row) { return row.kind == Kind::Number; });
        EXPECT_EQ(owner.expectations.size(), owner.texts) << owner.name;
        EXPECT_EQ(static_cast<std::size_t>(numbers), owner.numbers) << owner.name;
        EXPECT_EQ(owner.definitions.size(), owner.texts + owner.numbers) << owner.name;
    }
}

TEST(VocabularyTest, EveryFamily_HasItsNumberOfConstants) {
    struct Family {
        std::string_view owner;
        std::string_view prefix;
        long count;
    };
    constexpr auto families = std::to_array<Family>({
        {"IFormat", "TAG_", 1},
        {"IFormatCodec", "CODEC_ID_", 10},
        {"IFormatCodec", "TAG_", 25},
        {"IFormatCodecVideo", "CODEC_ID_", 198},
        {"IFormatCodecVideo", "TAG_", 140},
        {"IFormatCodecVideo", "ENCODER_", 1},
        {"IFormatCodecAudio", "CODEC_ID_", 134},
        {"IFormatCodecAudio", "TAG_", 45},
        {"IFormatCodecAudio", "TAG_AAC_PROFILE_", 8},
        {"IFormatCodecAudio", "TAG_CH_LAYOUT_", 29},
        {"IFormatCodecAudio", "ENCODER_", 1},
        {"IFormatCodecAudio", "FILTER_FAMILY_", 1},
        {"IFormatCodecSubtitle", "CODEC_ID_", 22},
        {"IFormatCodecSubtitle", "TAG_", 5},
        {"IFormatCodecSubtitle", "SUBTITLE_ENCODING_", 2},
        {"IFormatCodecSubtitle", "NATIVE_", 1},
        {"IFormatFile", "FORMAT_", 161 + 34},
        {"IFormatFile", "TAG_", 47},
        {"IFormatFile", "GROUP_", 31},
        {"IFormatFile", "POSTFIX_", 3},
        {"IFormatFile", "DVD_STANDARD_", 2},
        {"IFormatFile", "DISK_TYPE_", 3},
        {"IPreset", "KEY_", 13},
        {"IPreset", "KEY_FILTER_", 4},
        {"IPreset", "STREAM_TYPE_", 4},
        {"IPropertyConstraint", "DESCRIPTION_ID_", 1},
        {"ITranscodingMetaGraph", "KEY_", 6},
        {"ITranscodingMetaGraph", "MERGE_", 3},
    });
    for (const Family& family : families) {
        const std::span<const Expectation> rows = FindOwner(family.owner).expectations;
        EXPECT_EQ(std::count_if(
                      rows.begin(), rows.end(),
                      [&family](const Expectation& row) { return Unqualified(row.name).starts_with(family.prefix); }),
                  family.count)
            << family.owner << "::" << family.prefix;
    }
}

TEST(VocabularyTest, EveryConstant_HasTheTypeOfItsRow) {
    for (const Owner& owner : owners) {
        for (const Definition& definition : owner.definitions) {
            EXPECT_TRUE(definition.typeIsRight) << owner.name << "::" << definition.name;
        }
    }
}

TEST(VocabularyTest, EveryValue_HasNoBlankAtEitherEnd) {
    constexpr std::string_view blanks = " \t\r\n\f\v";
    for (const Expectation& row : AllExpectations()) {
        const std::string& value = *row.constant;
        EXPECT_FALSE(!value.empty() && blanks.find(value.front()) != std::string_view::npos) << row.name;
        EXPECT_FALSE(!value.empty() && blanks.find(value.back()) != std::string_view::npos) << row.name;
    }
}

TEST(VocabularyTest, EmptyValue_IsTheDefaultSubtitleEncodingOnly) {
    std::vector<std::string_view> empty;
    for (const Expectation& row : AllExpectations()) {
        if (row.constant->empty()) {
            empty.push_back(row.name);
        }
    }
    EXPECT_EQ(empty, std::vector<std::string_view>{"IFormatCodecSubtitle::SUBTITLE_ENCODING_DEFAULT"});
}

TEST(VocabularyTest, CodecId_IsItsOwnNameWithTwoExceptions) {
    std::map<std::string_view, std::string_view> exceptions;
    for (const Expectation& row : AllExpectations()) {
        const std::string_view name = Unqualified(row.name);
        if (name.starts_with("CODEC_ID_") && *row.constant != name) {
            exceptions[row.name] = *row.constant;
        }
    }
    const std::map<std::string_view, std::string_view> expected = {
        {"IFormatCodecAudio::CODEC_ID_ADPCM_VIMA", "CODEC_ID_VIMA"},
        {"IFormatCodecAudio::CODEC_ID_ADPCM_ZORK", "CODEC_ID_PCM_ZORK"},
    };
    EXPECT_EQ(exceptions, expected);
}

TEST(VocabularyTest, FormatId_IsItsNameInLowerCaseWithThirtyFourExceptions) {
    std::set<std::string_view> exceptions;
    for (const Expectation& row : fileExpectations) {
        const std::string_view name = Unqualified(row.name);
        if (!name.starts_with("FORMAT_")) {
            continue;
        }
        std::string lower(name.substr(std::string_view("FORMAT_").size()));
        for (char& c : lower) {
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
        if (*row.constant != lower) {
            exceptions.insert(name);
        }
    }
    const std::set<std::string_view> expected = {
#include <tests/Conf/VocabularyRows/FormatExceptions.inc>
    };
    EXPECT_EQ(expected.size(), 34u);
    EXPECT_EQ(exceptions, expected);
}

TEST(VocabularyTest, ImplName_IsItsNameWithImplAppendedWithTwelveExceptions) {
    std::map<std::string_view, std::string_view> exceptions;
    for (const Expectation& row : implNamesExpectations) {
        if (*row.constant != std::string(Unqualified(row.name)) + "_IMPL") {
            exceptions[Unqualified(row.name)] = *row.constant;
        }
    }
    const std::map<std::string_view, std::string_view> expected = {
        {"DEFAULT", "default"}, {"ANY", "any"},
        {"LIBRAW", "RAW_IMPL"}, {"AUDIO_TOOLBOX", "AUDIO_TOOLBOX"},
        {"SPEEX", "SPEEX"},     {"NVENC", "NVENC"},
        {"AMF", "AMF"},         {"QSV", "QSV"},
        {"NVDEC", "NVDEC"},     {"LIBCUEIFY", "LIBCUEIFY"},
        {"ONNXRT", "ONNXRT"},   {"OPENVINO", "OPENVINO"},
    };
    EXPECT_EQ(exceptions, expected);
}

TEST(VocabularyTest, ChannelLayoutWord_IsTheTextIdInItsName) {
    constexpr std::string_view prefix = "TAG_CH_LAYOUT_";
    for (const Expectation& row : audioExpectations) {
        const std::string_view name = Unqualified(row.name);
        if (name.starts_with(prefix)) {
            EXPECT_EQ(*row.constant, name.substr(prefix.size())) << row.name;
        }
    }
}

std::vector<std::string_view> ValuesOf(std::string_view owner, std::string_view prefix) {
    std::vector<std::string_view> values;
    for (const Expectation& row : FindOwner(owner).expectations) {
        if (Unqualified(row.name).starts_with(prefix)) {
            values.push_back(*row.constant);
        }
    }
    return values;
}

TEST(VocabularyTest, CodecIds_AreDistinctAcrossTheirOwners) {
    std::vector<std::string_view> ids;
    for (const Owner& owner : owners) {
        const std::vector<std::string_view> more = ValuesOf(owner.name, "CODEC_ID_");
        ids.insert(ids.end(), more.begin(), more.end());
    }
    EXPECT_EQ(ids.size(), 364u);
    EXPECT_EQ(Repeated(ids), none);
}

TEST(VocabularyTest, FormatIds_AreDistinct) { EXPECT_EQ(Repeated(ValuesOf("IFormatFile", "FORMAT_")), none); }

TEST(VocabularyTest, ImplNames_AreDistinct) { EXPECT_EQ(Repeated(ValuesOf("ImplNames", "")), none); }

// The owners whose constants meet in one class, which inherits all their vocabularies and keeps their keys in one tree.
std::vector<std::vector<std::string_view>> Inheritances() {
    return {
        {"IFormat", "IFormatCodec", "IFormatCodecVideo"},
        {"IFormat", "IFormatCodec", "IFormatCodecAudio"},
        {"IFormat", "IFormatCodec", "IFormatCodecSubtitle"},
        {"IFormat", "IFormatFile"},
        {"IPreset"},
        {"IPropertyConstraint"},
        {"ITranscodingMetaGraph"},
    };
}

TEST(VocabularyTest, Keys_AreDistinctWithinAClass) {
    for (const std::vector<std::string_view>& inheritance : Inheritances()) {
        std::vector<std::string_view> keys;
        for (const Definition& row : DefinitionsOf(inheritance)) {
            if (row.kind == Kind::Key) {
                keys.push_back(row.value);
            }
        }
        EXPECT_EQ(Repeated(keys), none) << inheritance.back();
    }
}

// A name that two inherited vocabularies share would be ambiguous, and so unusable.
TEST(VocabularyTest, Names_AreDistinctWithinAClass) {
    for (const std::vector<std::string_view>& inheritance : Inheritances()) {
        std::vector<std::string_view> names;
        for (const Definition& row : DefinitionsOf(inheritance)) {
            names.push_back(row.name);
        }
        EXPECT_EQ(Repeated(names), none) << inheritance.back();
    }
}

TEST(VocabularyTest, RowKind_FitsTheNameOfTheConstant) {
    for (const Owner& owner : owners) {
        for (const Definition& row : owner.definitions) {
            const bool isCodec = row.kind == Kind::Codec || row.kind == Kind::CodecAs;
            EXPECT_EQ(isCodec, row.name.starts_with("CODEC_ID_")) << owner.name << "::" << row.name;
            EXPECT_EQ(row.kind == Kind::Format, owner.name == "IFormatFile" && row.name.starts_with("FORMAT_"))
                << owner.name << "::" << row.name;
        }
    }
}

TEST(VocabularyTest, StoredKind_IsTheOneTheAccessorsWrite) {
    struct KeyKind {
        std::string_view owner;
        std::string_view name;
        Stored stored;
    };
    constexpr auto kinds = std::to_array<KeyKind>({
        {"IFormat", "TAG_METADATA", Stored::Node},
        {"IFormatCodec", "TAG_STREAM_ID", Stored::Int64},
        {"IFormatCodec", "TAG_CODEC_OPTIONS_ENCODE", Stored::Node},
        {"IFormatCodec", "TAG_STREAM_METADATA", Stored::Node},
        {"IFormatCodec", "TAG_STREAM_TIMEBASE", Stored::Ratio},
        {"IFormatCodec", "TAG_LANGUAGE", Stored::String},
        {"IFormatCodecVideo", "TAG_WIDTH", Stored::Int64},
        {"IFormatCodecVideo", "TAG_HEIGHT", Stored::Int64},
        {"IFormatCodecVideo", "TAG_ASPECTX", Stored::Int64},
        {"IFormatCodecVideo", "TAG_ASPECTY", Stored::Int64},
        {"IFormatCodecVideo", "TAG_COVER_FLAG", Stored::Bool},
        {"IFormatCodecVideo", "TAG_FPS", Stored::Ratio},
        {"IFormatCodecVideo", "TAG_COLOR_PRIMARIES", Stored::Int64},
        {"IFormatCodecVideo", "TAG_COLOR_TRANSFER_FUNCTION", Stored::Int64},
        {"IFormatCodecVideo", "TAG_COLOR_MATRIX", Stored::Int64},
        {"IFormatCodecVideo", "TAG_USE_HW_CONTEXT", Stored::Any},
        {"IFormatCodecAudio", "TAG_SAMPLE_RATE", Stored::Int64},
        {"IFormatCodecAudio", "TAG_BLOCK_ALIGNMENT", Stored::Int64},
        {"IFormatCodecAudio", "TAG_BITS_PER_SAMPLE", Stored::Int64},
        {"IFormatCodecAudio", "TAG_LAYOUT", Stored::String},
        {"IFormatCodecAudio", "TAG_SAMPLE_FORMAT", Stored::String},
        {"IFormatFile", "TAG_CONTAINER", Stored::String},
        {"ITranscodingMetaGraph", "CONTROLLED_BY", Stored::Int64},
        {"ITranscodingMetaGraph", "KEY_FILEPATH", Stored::String},
        {"ITranscodingMetaGraph", "KEY_STREAM_RAW_ID", Stored::Int64},
        {"ITranscodingMetaGraph", "MERGE_SETTINGS", Stored::Node},
    });
    for (const KeyKind& key : kinds) {
        const std::span<const Definition> rows = FindOwner(key.owner).definitions;
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&key](const Definition& r) { return r.name == key.name; });
        ASSERT_NE(row, rows.end()) << key.owner << "::" << key.name;
        EXPECT_EQ(row->kind, Kind::Key) << key.owner << "::" << key.name;
        EXPECT_EQ(row->stored, key.stored) << key.owner << "::" << key.name;
    }
}

bool IsSentence(std::string_view text) {
    return text.size() >= 4 && text.front() != ' ' && text.back() == '.' && text.find("  ") == std::string_view::npos;
}

TEST(VocabularyTest, Meaning_IsASentence) {
    for (const Owner& owner : owners) {
        for (const Definition& row : owner.definitions) {
            EXPECT_TRUE(IsSentence(row.meaning)) << owner.name << "::" << row.name << ": \"" << row.meaning << '"';
        }
    }
}

}  // namespace
}  // namespace Quenzo::Conf
