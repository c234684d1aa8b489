// Covers Conf/Interfaces/AppleUTI: the container and the codec of every type identifier, still and animated, and what
// is logged of unknown ones.

#include <Conf/Interfaces/AppleUTI.h>
#include <tests/Conf/CatalogueSupport.h>

#include <glog/logging.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo::Conf::UTI {
namespace {

using Conf::Testing::Strings;

struct Row {
    std::string_view uti;
    std::string_view format;
    std::string_view codec;
};

constexpr auto kStillPictures = std::to_array<Row>({
#include <tests/Conf/CatalogueRows/TypeIdentifiers.inc>
});

constexpr auto kAnimations = std::to_array<Row>({
    {"public.png", "apng", "CODEC_ID_APNG"},
    {"public.jpeg-xl", "ajpegxl", ""},
    {"org.webmproject.webp", "awebp", ""},
});

template <typename Rows>
bool Holds(const Rows& rows, std::string_view uti) {
    return std::any_of(rows.begin(), rows.end(), [uti](const Row& row) { return row.uti == uti; });
}

TEST(AppleUTITest, StillPictures_HaveTheirContainersAndCodecs) {
    static_assert(kStillPictures.size() == 61);
    for (const Row& row : kStillPictures) {
        EXPECT_EQ(FindFormatID(std::string(row.uti)), row.format) << row.uti;
        EXPECT_EQ(FindCodecID(std::string(row.uti)), row.codec) << row.uti;
    }
}

TEST(AppleUTITest, StillPictures_AreOpenedWithIdsOfTheVocabulary) {
    const Strings& formats = Conf::Testing::AllContainerConstants();
    const Strings& codecs = Conf::Testing::AllCodecConstants();
    for (const Row& row : kStillPictures) {
        EXPECT_EQ(row.format.empty(), row.codec.empty()) << row.uti;
        EXPECT_TRUE(row.format.empty() || std::binary_search(formats.begin(), formats.end(), row.format)) << row.uti;
        EXPECT_TRUE(row.codec.empty() || std::binary_search(codecs.begin(), codecs.end(), row.codec)) << row.uti;
    }
}

TEST(AppleUTITest, Animations_HaveTheirContainersAndCodecs) {
    for (const Row& row : kAnimations) {
        EXPECT_EQ(FindAnimatedFormatID(std::string(row.uti)), row.format) << row.uti;
        EXPECT_EQ(FindAnimatedCodecID(std::string(row.uti)), row.codec) << row.uti;
    }
}

TEST(AppleUTITest, StillPictures_ThatHoldNoAnimationAreUnknownToTheAnimated) {
    std::size_t unknown = 0;
    for (const Row& row : kStillPictures) {
        if (!Holds(kAnimations, row.uti)) {
            EXPECT_EQ(FindAnimatedFormatID(std::string(row.uti)), "") << row.uti;
            EXPECT_EQ(FindAnimatedCodecID(std::string(row.uti)), "") << row.uti;
            ++unknown;
        }
    }
    EXPECT_EQ(unknown, 58U);
}

void ExpectUnknown(const std::string& uti) {
    EXPECT_EQ(FindFormatID(uti), "") << uti;
    EXPECT_EQ(FindCodecID(uti), "") << uti;
    EXPECT_EQ(FindAnimatedFormatID(uti), "") << uti;
    EXPECT_EQ(FindAnimatedCodecID(uti), "") << uti;
}

TEST(AppleUTITest, UnknownIdentifiers_GiveEmptyTexts) {
    ExpectUnknown("");
    ExpectUnknown("p");
    ExpectUnknown("public");
    ExpectUnknown("public.");
    ExpectUnknown("PUBLIC.JPEG");
    ExpectUnknown("Public.jpeg");
    ExpectUnknown("public.jpg");
    ExpectUnknown("jpeg");
    ExpectUnknown("com.sony");
    ExpectUnknown(std::string("public.jpeg\0", 12));
    ExpectUnknown(std::string(100000, 'p'));
}

TEST(AppleUTITest, TextsThatResembleAnIdentifier_GiveEmptyTexts) {
    for (const Row& row : kStillPictures) {
        for (const std::string& text : Conf::Testing::Lookalikes(std::string(row.uti))) {
            if (!Holds(kStillPictures, text)) {
                ExpectUnknown(text);
            }
        }
    }
}

// The containers of raw photographs are named by their type identifiers; all others have names of their own.
TEST(AppleUTITest, IdentifiersOfTheVocabulary_AreUnknownButThoseOfRawPhotographs) {
    std::size_t known = 0;
    for (const std::string& identifier : Conf::Testing::AllIdentifiers()) {
        if (Holds(kStillPictures, identifier)) {
            EXPECT_EQ(FindFormatID(identifier), identifier);
            EXPECT_EQ(FindCodecID(identifier), "CODEC_ID_LIBRAW");
            ++known;
        } else {
            ExpectUnknown(identifier);
        }
    }
    EXPECT_EQ(known, 30U);
}

RC_GTEST_PROP(AppleUTITest, AnyOtherText_GivesEmptyTexts, (const std::string& text)) {
    RC_PRE(!Holds(kStillPictures, text));
    RC_ASSERT(FindFormatID(text).empty() && FindCodecID(text).empty());
    RC_ASSERT(FindAnimatedFormatID(text).empty() && FindAnimatedCodecID(text).empty());
}

TEST(AppleUTITest, Answers_AreTheSameObjectsEveryTime) {
    for (const auto& find : {FindFormatID, FindCodecID, FindAnimatedFormatID, FindAnimatedCodecID}) {
        for (const Row& row : kStillPictures) {
            EXPECT_EQ(&find(std::string(row.uti)), &find(std::string(row.uti))) << row.uti;
        }
        EXPECT_EQ(&find("unknown"), &find("another"));
    }
    EXPECT_EQ(&FindFormatID("unknown"), &FindAnimatedFormatID("unknown"));
    EXPECT_EQ(&FindCodecID("unknown"), &FindAnimatedCodecID("unknown"));
}

TEST(AppleUTITest, Answers_StayAsTheyAreAcrossLaterCalls) {
    const std::string& format = FindFormatID("public.jpeg");
    const std::string& codec = FindCodecID("public.jpeg");
    const std::string& animated = FindAnimatedFormatID("public.png");
    const std::string& unknown = FindFormatID("public.unknown");
    for (const Row& row : kStillPictures) {
        EXPECT_EQ(FindFormatID(std::string(row.uti)), row.format);
    }
    EXPECT_EQ(format, "jpeg");
    EXPECT_EQ(codec, "CODEC_ID_MJPEG");
    EXPECT_EQ(animated, "apng");
    EXPECT_EQ(unknown, "");
}

// What is logged while it lives, at a verbose level.
class LogLines : public google::LogSink {
public:
    explicit LogLines(int level) : levelBefore_(FLAGS_v) {
        FLAGS_v = level;
        google::AddLogSink(this);
    }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;
    ~LogLines() override {
        google::RemoveLogSink(this);
        FLAGS_v = levelBefore_;
    }

    void send(google::LogSeverity severity, const char* /*path*/, const char* file, int /*line*/,
              const google::LogMessageTime& /*time*/, const char* message, std::size_t length) override {
        lines_.push_back(std::string(google::GetLogSeverityName(severity)) + " " + file + " " +
                         std::string(message, length));
    }

    const Strings& Lines() const { return lines_; }

private:
    int levelBefore_;
    Strings lines_;
};

TEST(AppleUTITest, Log_NamesAnUnknownIdentifierOncePerQuery) {
    const std::string line = "INFO AppleUTI.cpp Unknown Universal Type Identifier: 'PUBLIC.JPEG'";
    const LogLines log(30);
    EXPECT_EQ(FindFormatID("PUBLIC.JPEG"), "");
    EXPECT_EQ(log.Lines(), Strings{line});
    EXPECT_EQ(FindCodecID("PUBLIC.JPEG"), "");
    EXPECT_EQ(log.Lines(), (Strings{line, line}));
    EXPECT_EQ(FindFormatID("PUBLIC.JPEG"), "");
    EXPECT_EQ(log.Lines(), (Strings{line, line, line}));
}

TEST(AppleUTITest, Log_TakesTheIdentifierAsItIs) {
    const LogLines log(31);
    for (const char* uti : {"", "{}", "a 'quoted' one", "%s", "public.j"}) {
        EXPECT_EQ(FindFormatID(uti), "");
    }
    EXPECT_EQ(log.Lines(), (Strings{"INFO AppleUTI.cpp Unknown Universal Type Identifier: ''",
                                    "INFO AppleUTI.cpp Unknown Universal Type Identifier: '{}'",
                                    "INFO AppleUTI.cpp Unknown Universal Type Identifier: 'a 'quoted' one'",
                                    "INFO AppleUTI.cpp Unknown Universal Type Identifier: '%s'",
                                    "INFO AppleUTI.cpp Unknown Universal Type Identifier: 'public.j'"}));
}

TEST(AppleUTITest, Log_TakesTheIdentifierWithItsZeroCharacters) {
    using namespace std::string_literals;
    const LogLines log(30);
    EXPECT_EQ(FindFormatID("a\0b"s), "");
    EXPECT_EQ(log.Lines(), (Strings{"INFO AppleUTI.cpp Unknown Universal Type Identifier: 'a\0b'"s}));
}

// What has been logged once the level of one source file is set.
Strings LinesAtALevelOf(const char* file, int level) {
    const LogLines log(0);
    EXPECT_EQ(FindFormatID("asked before"), "");
    google::SetVLOGLevel(file, level);
    EXPECT_EQ(FindFormatID("asked after"), "");
    return log.Lines();
}

// Each in a process of its own, for a file that has been given a level keeps it.
TEST(AppleUTITest, Log_HeedsTheLevelOfItsSourceFile) {
    const Strings expected = {"INFO AppleUTI.cpp Unknown Universal Type Identifier: 'asked after'"};
    EXPECT_EXIT(std::exit(LinesAtALevelOf("AppleUTI", 30) == expected ? 0 : 1), ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT(std::exit(LinesAtALevelOf("AppleUTI", 29).empty() ? 0 : 1), ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT(std::exit(LinesAtALevelOf("GlogFunctions", 30).empty() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST(AppleUTITest, Log_IsSilentBelowLevelThirty) {
    for (const int level : {29, 1, 0, -1}) {
        const LogLines log(level);
        EXPECT_EQ(FindFormatID("unknown"), "");
        EXPECT_EQ(FindCodecID("unknown"), "");
        EXPECT_EQ(log.Lines(), Strings()) << level;
    }
}

TEST(AppleUTITest, Log_IsSilentOfEveryKnownIdentifier) {
    const LogLines log(30);
    for (const Row& row : kStillPictures) {
        EXPECT_EQ(FindFormatID(std::string(row.uti)), row.format);
        EXPECT_EQ(FindCodecID(std::string(row.uti)), row.codec);
    }
    EXPECT_EQ(FindFormatID("com.microsoft.ico"), "");
    EXPECT_EQ(log.Lines(), Strings());
}

TEST(AppleUTITest, Log_IsSilentOfAnimations) {
    const LogLines log(30);
    for (const char* uti : {"public.png", "public.jpeg-xl", "public.jpeg", "unknown", ""}) {
        EXPECT_EQ(FindAnimatedFormatID(uti).empty(), !Holds(kAnimations, uti));
        EXPECT_EQ(FindAnimatedCodecID(uti).empty(), std::string_view(uti) != "public.png");
    }
    EXPECT_EQ(log.Lines(), Strings());
}

}  // namespace
}  // namespace Quenzo::Conf::UTI
