// docs/keys.md and docs/identifiers.md: they are what the generator prints, and that says what the rows say.

#include <tests/docs/Guide.h>
#include <tests/docs/VocabularyRows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Quenzo::Docs {
namespace {

using testing::HasSubstr;

std::string Generate(const std::string& page) {
    const auto result = RunBuilt({QUENZO_TEST_GENERATOR, page});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    return result.output;
}

void ExpectFresh(const std::string& page) {
    EXPECT_TRUE(Generate(page) == ReadFile(InRepository("docs/" + page + ".md")))
        << "docs/" << page << ".md is not what the vocabulary says; refresh it with: scripts/check-docs --fix";
}

TEST(KeyPages, Keys_AreFresh) { ExpectFresh("keys"); }

TEST(KeyPages, Identifiers_AreFresh) { ExpectFresh("identifiers"); }

TEST(KeyPages, Keys_HaveTextConstantTypeMeaningAndOwner) {
    const std::string page = Generate("keys");
    EXPECT_THAT(page, HasSubstr("\n## IFormatCodec\n"));
    EXPECT_THAT(page, HasSubstr("\n| `bitrate` | `TAG_BITRATE` | Int64 | Bit rate, in bits per second. |\n"));
    EXPECT_THAT(page, HasSubstr("\n| `frameRateRatio` | `TAG_FPS` | Ratio | Frame rate, in frames per second. |\n"));
    EXPECT_THAT(page, HasSubstr("\n| `CBR_AUTO` | `TAG_BITRATE_MODE_CBR_AUTO` | Bit rate mode: constant bit rate, "
                                "chosen automatically. |\n"));
    EXPECT_THAT(page, HasSubstr("\n| 500 000 000 | `MAX_VIDEO_BITRATE` | Highest bit rate of a video stream, in bits "
                                "per second. |\n"));
    EXPECT_THAT(
        page, HasSubstr("\n| (empty) | `SUBTITLE_ENCODING_DEFAULT` | Default encoding choice; empty on purpose. |\n"));
    EXPECT_THAT(page, HasSubstr("one of the CODEC_ID_\\* values."));
}

TEST(KeyPages, Identifiers_HaveNameExtensionsAndMeaning) {
    const std::string page = Generate("identifiers");
    EXPECT_THAT(page, HasSubstr("\n| `CODEC_ID_MPEG1VIDEO` | MPEG-1 | MPEG-1 video (ISO/IEC 11172-2). |\n"));
    EXPECT_THAT(page, HasSubstr("\n| `CODEC_ID_ADPCM_VIMA`, stored as `CODEC_ID_VIMA` | "));
    EXPECT_THAT(page, HasSubstr("\n| `CODEC_ID_AUTO` (in no catalogue) |  | The codec is still to be chosen. |\n"));
    EXPECT_THAT(page, HasSubstr("\n| `matroska` | `FORMAT_MATROSKA` | Other | "));
}

// Every row is on one of the two pages, with its text and its meaning.
TEST(KeyPages, EveryRow_IsOnAPage) {
    const std::string keys = Generate("keys");
    const std::string identifiers = Generate("identifiers");
    std::size_t rows = 0;
    for (const Owner& owner : Owners()) {
        for (const Row& row : owner.rows) {
            const bool isIdentifier = row.kind == Kind::Codec || row.kind == Kind::Format;
            EXPECT_THAT(isIdentifier ? identifiers : keys, HasSubstr("`" + std::string(row.constant) + "`"));
            ++rows;
        }
    }
    // 939 texts and 7 numbers.
    EXPECT_EQ(rows, 946u);
}

}  // namespace
}  // namespace Quenzo::Docs
