// Covers Conf/Interfaces/MediaTypeUtils: the groups of files with their kinds, extensions and tips, and the look-ups
// between containers and extensions, which are compared with the pairs written out in CatalogueRows/.

#include <Conf/Interfaces/IFormatFile.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <tests/Conf/CatalogueSupport.h>
#include <tests/Conf/TableSupport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectRaised;
using Testing::Strings;

using Offered = std::vector<std::pair<IFormatFile::MediaType, std::string>>;

static_assert(std::is_same_v<decltype(GetSupportedFormats()), Offered>);
static_assert(static_cast<int>(IFormatFile::MediaType::AllFiles) == 0);
static_assert(static_cast<int>(IFormatFile::MediaType::Video) == 1);
static_assert(static_cast<int>(IFormatFile::MediaType::Audio) == 2);
static_assert(static_cast<int>(IFormatFile::MediaType::Subtitles) == 3);
static_assert(static_cast<int>(IFormatFile::MediaType::Images) == 4);

struct Group {
    std::string name;
    Strings extensions;
};

const std::vector<Group>& ExpectedGroups() {
    static const std::vector<Group> groups = {
#include <tests/Conf/CatalogueRows/FileGroups.inc>
    };
    return groups;
}

bool IsGroup(const std::string& text) {
    return std::any_of(ExpectedGroups().begin(), ExpectedGroups().end(),
                       [&text](const Group& group) { return group.name == text; });
}

TEST(MediaTypeUtilsTest, GetSupportedFormats_AreTheGroupsInOrderWithTheirKinds) {
    const std::vector<std::pair<int, std::string>> expected = {
        {0, "All Files"}, {1, "All Video"},     {1, "AVI"},        {1, "MP4"},       {1, "MPEG"},  {1, "WMV"},
        {1, "3GP"},       {1, "DVD"},           {1, "RM"},         {1, "QuickTime"}, {1, "Flash"}, {1, "HD"},
        {1, "MKV"},       {1, "WEBM"},          {2, "All Audio"},  {2, "MP3"},       {2, "WAV"},   {2, "WMA"},
        {2, "FLAC"},      {2, "AC3"},           {2, "AAC"},        {2, "M4A"},       {2, "OGG"},   {2, "AMR"},
        {2, "CD"},        {3, "All Subtitles"}, {4, "All images"},
    };
    std::vector<std::pair<int, std::string>> offered;
    for (const auto& [kind, group] : GetSupportedFormats()) {
        offered.emplace_back(static_cast<int>(kind), group);
    }
    EXPECT_EQ(offered.size(), 27U);
    EXPECT_EQ(offered, expected);
}

TEST(MediaTypeUtilsTest, GetSupportedFormats_LeaveOutFourGroupsThatHaveExtensions) {
    std::set<std::string> offered;
    for (const auto& [kind, group] : GetSupportedFormats()) {
        EXPECT_TRUE(IsGroup(group)) << group;
        offered.insert(group);
    }
    Strings others;
    for (const Group& group : ExpectedGroups()) {
        if (!offered.contains(group.name)) {
            others.push_back(group.name);
        }
    }
    EXPECT_EQ(others, (Strings{"FFMPEG images", "Raw images", "HEIF images", "Other"}));
}

TEST(MediaTypeUtilsTest, GetSupportedFormatExtensions_AreAllTokensInOrder) {
    ASSERT_EQ(ExpectedGroups().size(), 31U);
    for (const Group& group : ExpectedGroups()) {
        EXPECT_EQ(GetSupportedFormatExtensions(group.name), group.extensions) << group.name;
    }
}

TEST(MediaTypeUtilsTest, GetSupportedFormatExtensions_KeepsWhatStandsThereTwice) {
    const Strings video = GetSupportedFormatExtensions("All Video");
    EXPECT_EQ(video.size(), 112U);
    for (const char* extension : {"asf", "mtv", "nut", "vc1"}) {
        EXPECT_EQ(std::count(video.begin(), video.end(), extension), 2) << extension;
    }
    EXPECT_EQ(GetSupportedFormatExtensions("All Audio").size(), 48U);
}

TEST(MediaTypeUtilsTest, GetSupportedFormatExtensions_OfAllImagesAreThoseOfItsPartsInOrder) {
    Strings expected = GetSupportedFormatExtensions("FFMPEG images");
    expected = Testing::Joined(std::move(expected), GetSupportedFormatExtensions("Raw images"));
    expected = Testing::Joined(std::move(expected), GetSupportedFormatExtensions("HEIF images"));
    const Strings images = GetSupportedFormatExtensions("All images");
    EXPECT_EQ(images, expected);
    EXPECT_EQ(images.size(), 27U + 38U + 2U);
    EXPECT_EQ(images[65], "heif");
    EXPECT_EQ(images[66], "heic");
}

TEST(MediaTypeUtilsTest, EveryGroupConstant_HasExtensions) {
    const auto& identifiers = Testing::AllIdentifiers();
    for (const Group& group : ExpectedGroups()) {
        EXPECT_TRUE(std::binary_search(identifiers.begin(), identifiers.end(), group.name)) << group.name;
    }
    EXPECT_EQ(GetSupportedFormatExtensions(IFormatFile::GROUP_OTHER), (Strings{"dat", "mrec"}));
    EXPECT_EQ(GetSupportedFormatExtensions(IFormatFile::GROUP_ALL_FILES), Strings{"*"});
}

void ExpectNoGroup(const std::string& text) {
    SCOPED_TRACE(text);
    ExpectRaised<std::invalid_argument>([&text] { GetSupportedFormatExtensions(text); }, "Unknown group id",
                                        "Conf/Interfaces/MediaTypeUtils.cpp", "GetSupportedFormatExtensions");
    EXPECT_EQ(GetFormatExtentionTip(text), "");
}

TEST(MediaTypeUtilsTest, UnknownGroup_ThrowsAndHasNoTip) {
    ExpectNoGroup("");
    ExpectNoGroup("A");
    ExpectNoGroup("all video");
    ExpectNoGroup("All images;");
    ExpectNoGroup("mp4");
    ExpectNoGroup("*");
    ExpectNoGroup("OtherOther");
    ExpectNoGroup(std::string(100000, 'x'));
}

TEST(MediaTypeUtilsTest, TextsThatResembleAGroup_ThrowAndHaveNoTip) {
    for (const Group& group : ExpectedGroups()) {
        for (const std::string& text : Testing::Lookalikes(group.name)) {
            if (!IsGroup(text)) {
                ExpectNoGroup(text);
            }
        }
    }
}

TEST(MediaTypeUtilsTest, GetFormatExtentionTip_ExistsForFourGroups) {
    const std::map<std::string, std::string> expected = {
        {"All Files", "*.*"},
        {"All Video", "*.mp4;*.avi;*.mpeg;*.flv;..."},
        {"All Audio", "*.mp3;*.flac;*.wav;..."},
        {"All images", "*.jpeg;*.png;*.bmp;..."},
    };
    for (const Group& group : ExpectedGroups()) {
        const auto tip = expected.find(group.name);
        EXPECT_EQ(GetFormatExtentionTip(group.name), tip != expected.end() ? tip->second : "") << group.name;
    }
}

// Container to extensions, or extension to containers, in lower case and in the order of the pairs.
using Index = std::map<std::string, Strings>;

Index ExtensionsByFormat() {
    Index index;
    for (const auto& [format, extension] : Testing::ExpectedFormatExtensions()) {
        index[Testing::InLowerCase(format)].push_back(extension);
    }
    return index;
}

Index FormatsByExtension() {
    Index index;
    for (const auto& [format, extension] : Testing::ExpectedFormatExtensions()) {
        index[Testing::InLowerCase(extension)].push_back(format);
    }
    return index;
}

Strings InAnyCase(const std::string& text) {
    Strings texts = {text, Testing::InLowerCase(text), Testing::InUpperCase(text), text, text};
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string& mixed = texts[3 + i % 2];
        mixed[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(mixed[i])));
    }
    return texts;
}

using Look = const Strings& (*)(const std::string&);

void ExpectIndex(Look look, const Index& expected, std::size_t keys) {
    ASSERT_EQ(expected.size(), keys);
    for (const auto& [key, values] : expected) {
        for (const std::string& text : InAnyCase(key)) {
            EXPECT_EQ(look(text), values) << text;
            EXPECT_EQ(&look(text), &look(key)) << text;
        }
    }
}

TEST(MediaTypeUtilsTest, GetExtensionsByFormat_FindsEveryFormatInAnyCase) {
    ExpectIndex(GetExtensionsByFormat, ExtensionsByFormat(), 126);
}

TEST(MediaTypeUtilsTest, GetFormatsByExtension_FindsEveryExtensionInAnyCase) {
    ExpectIndex(GetFormatsByExtension, FormatsByExtension(), 119);
}

// What the model says of a text in any case.
Strings InModel(const Index& model, const std::string& text) {
    const auto found = model.find(Testing::InLowerCase(text));
    return found != model.end() ? found->second : Strings();
}

TEST(MediaTypeUtilsTest, LookUps_OfEveryIdentifierAndWhatResemblesItAgreeWithThePairs) {
    const Index extensions = ExtensionsByFormat();
    const Index formats = FormatsByExtension();
    std::size_t known = 0;
    for (const std::string& text : Testing::Probes()) {
        EXPECT_EQ(GetExtensionsByFormat(text), InModel(extensions, text)) << text.substr(0, 100);
        EXPECT_EQ(GetFormatsByExtension(text), InModel(formats, text)) << text.substr(0, 100);
        known += GetExtensionsByFormat(text).empty() ? 0 : 1;
    }
    EXPECT_GE(known, extensions.size());
}

// The text with one bit of each of its characters flipped in turn.
Strings WithFlippedBit(const std::string& text, unsigned bit) {
    Strings texts(text.size(), text);
    for (std::size_t i = 0; i < text.size(); ++i) {
        texts[i][i] = static_cast<char>(static_cast<unsigned char>(text[i]) ^ bit);
    }
    return texts;
}

// Letters differ between the cases in one bit; of other characters, that bit must count.
TEST(MediaTypeUtilsTest, LookUps_FoldLettersOnly) {
    const Index extensions = ExtensionsByFormat();
    const Index formats = FormatsByExtension();
    for (const auto& [format, extension] : Testing::ExpectedFormatExtensions()) {
        for (const std::string& text : WithFlippedBit(format, 0x20)) {
            EXPECT_EQ(GetExtensionsByFormat(text), InModel(extensions, text)) << text;
        }
        for (const std::string& text : WithFlippedBit(extension, 0x20)) {
            EXPECT_EQ(GetFormatsByExtension(text), InModel(formats, text)) << text;
        }
    }
}

TEST(MediaTypeUtilsTest, LookUps_DoNotFoldDigitsAndForeignLetters) {
    EXPECT_THAT(GetExtensionsByFormat("mpeg1video"), testing::ElementsAre("mpg"));
    EXPECT_THAT(GetExtensionsByFormat("mpeg\x11video"), testing::IsEmpty());
    EXPECT_THAT(GetFormatsByExtension("mkv"), testing::ElementsAre("matroska"));
    EXPECT_THAT(GetFormatsByExtension("m\xE2\x84\xAAv"), testing::IsEmpty());  // the Kelvin sign
    EXPECT_THAT(GetFormatsByExtension("\xCDkv"), testing::IsEmpty());
    EXPECT_THAT(GetExtensionsByFormat("av\xC4\xB1"), testing::IsEmpty());  // i without its dot
}

TEST(MediaTypeUtilsTest, GetExtensionsByFormat_KeepsTheOrderOfThePairs) {
    EXPECT_EQ(GetExtensionsByFormat("jpeg"), (Strings{"jpeg", "jpg", "jpe"}));
    EXPECT_EQ(GetExtensionsByFormat("mpegts"), (Strings{"mts", "ts"}));
    EXPECT_EQ(GetExtensionsByFormat("jpeg2000"), (Strings{"jp2", "jpf", "jpx", "j2k", "j2c"}));
    EXPECT_EQ(GetExtensionsByFormat("apng"), (Strings{"png", "apng"}));
}

TEST(MediaTypeUtilsTest, GetFormatsByExtension_KeepsTheOrderOfThePairs) {
    EXPECT_EQ(GetFormatsByExtension("mp4"), (Strings{"mp4", "psp", "ipod"}));
    EXPECT_EQ(GetFormatsByExtension("webp"), (Strings{"webp", "awebp"}));
    EXPECT_EQ(GetFormatsByExtension("JXL"), (Strings{"jpegxl", "ajpegxl"}));
    EXPECT_EQ(GetFormatsByExtension("orf"),
              (Strings{"com.olympus.or-raw-image", "com.olympus.raw-image", "com.olympus.sr-raw-image"}));
    EXPECT_EQ(GetFormatsByExtension("hdr"), (Strings{"radiance_hdr", "hdr"}));
    EXPECT_EQ(GetFormatsByExtension("mpg"), (Strings{"mpeg", "mpeg1video", "mpeg2video", "vob"}));
}

TEST(MediaTypeUtilsTest, LookUps_OfAnyUnknownKeyGiveTheSameEmptyList) {
    const Strings unknown = {"",
                             "m",
                             "xyz",
                             ".mp4",
                             "mp4 ",
                             " mp4",
                             "*",
                             std::string("mp4\0", 4),
                             std::string(1, '\0'),
                             std::string(31, 'm'),
                             std::string(32, 'm'),
                             std::string(33, 'm'),
                             std::string(64, 'm'),
                             std::string(1000000, 'm')};
    for (const std::string& key : unknown) {
        EXPECT_TRUE(GetExtensionsByFormat(key).empty()) << key.substr(0, 100);
        EXPECT_TRUE(GetFormatsByExtension(key).empty()) << key.substr(0, 100);
        EXPECT_EQ(&GetExtensionsByFormat(key), &GetExtensionsByFormat("unknown"));
        EXPECT_EQ(&GetFormatsByExtension(key), &GetExtensionsByFormat("unknown"));
    }
}

TEST(MediaTypeUtilsTest, LookUps_KeepTheirAnswersAcrossLaterCalls) {
    const Strings& jpeg = GetExtensionsByFormat("jpeg");
    const Strings& webp = GetFormatsByExtension("webp");
    const std::string& mkv = GetDefaultFileExtensionForContainer("matroska");
    for (const auto& [format, extension] : Testing::ExpectedFormatExtensions()) {
        EXPECT_FALSE(GetExtensionsByFormat(format).empty());
        EXPECT_FALSE(GetFormatsByExtension(extension).empty());
    }
    EXPECT_EQ(jpeg, (Strings{"jpeg", "jpg", "jpe"}));
    EXPECT_EQ(webp, (Strings{"webp", "awebp"}));
    EXPECT_EQ(mkv, "mkv");
}

TEST(MediaTypeUtilsTest, GetDefaultFileExtensionForContainer_IsTheFirstExtension) {
    for (const auto& [format, extensions] : ExtensionsByFormat()) {
        for (const std::string& text : InAnyCase(format)) {
            const std::string& extension = GetDefaultFileExtensionForContainer(text);
            EXPECT_EQ(extension, extensions.front()) << text;
            EXPECT_EQ(&extension, &GetExtensionsByFormat(format).front()) << text;
        }
    }
}

TEST(MediaTypeUtilsTest, GetDefaultFileExtensionForContainer_OfSomeContainers) {
    EXPECT_EQ(GetDefaultFileExtensionForContainer("matroska"), "mkv");
    EXPECT_EQ(GetDefaultFileExtensionForContainer("MATROSKA"), "mkv");
    EXPECT_EQ(GetDefaultFileExtensionForContainer("mpeg"), "mpg");
    EXPECT_EQ(GetDefaultFileExtensionForContainer("mpegts"), "mts");
    EXPECT_EQ(GetDefaultFileExtensionForContainer("jpeg"), "jpeg");
    EXPECT_EQ(GetDefaultFileExtensionForContainer("apng"), "png");
}

void ExpectNoContainer(const std::string& text) {
    ExpectRaised<std::invalid_argument>([&text] { GetDefaultFileExtensionForContainer(text); },
                                        "Unknown media container name: " + text, "Conf/Interfaces/MediaTypeUtils.cpp",
                                        "GetDefaultFileExtensionForContainer");
}

TEST(MediaTypeUtilsTest, GetDefaultFileExtensionForContainer_OfAnUnknownContainerThrows) {
    ExpectNoContainer("");
    ExpectNoContainer("m");
    ExpectNoContainer("mkv");
    ExpectNoContainer("MKV");
    ExpectNoContainer("Matroska ");
    ExpectNoContainer("alias_pix");
    ExpectNoContainer("{}");
    ExpectNoContainer(std::string(5000, 'm'));
}

TEST(MediaTypeUtilsTest, GetDefaultFileExtensionForContainer_ThrowsForContainersWithoutAnExtension) {
    const Index extensions = ExtensionsByFormat();
    std::size_t without = 0;
    for (const std::string& container : Testing::AllContainerConstants()) {
        if (!extensions.contains(container)) {
            ExpectNoContainer(container);
            ++without;
        }
    }
    EXPECT_EQ(without + extensions.size(), Testing::AllContainerConstants().size());
}

RC_GTEST_PROP(MediaTypeUtilsTest, LookUps_OfAnyTextAgreeWithThePairs, (const std::string& text)) {
    RC_ASSERT(GetExtensionsByFormat(text) == InModel(ExtensionsByFormat(), text));
    RC_ASSERT(GetFormatsByExtension(text) == InModel(FormatsByExtension(), text));
}

}  // namespace
}  // namespace Quenzo::Conf
