// Covers Conf/Interfaces/TextIndex and FixedText: tables of several sizes of generated texts find each of their texts
// and no others, whatever the texts have in common.

#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/TextIndex.h>
#include <tests/Conf/TableSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo::Detail {
namespace {

using Strings = std::vector<std::string>;

// How the texts of a table are made: something random between a beginning and an ending that all share.
struct Recipe {
    std::string_view beginning;
    std::string_view ending;
    std::string_view letters;
    std::size_t shortest;  // of the random part
    std::size_t longest;
};

constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789_.-";

constexpr auto kRecipes = std::to_array<Recipe>({
    {"", "", kLetters, 2, 40},
    {"", "", kLetters, 2, 2},
    {"", "", kLetters, 2, 3},
    {"", "", kLetters, 4, 4},
    {"", "", kLetters, 7, 9},
    {"", "", kLetters, 8, 8},
    {"", "", "ab", 9, 40},
    {"CODEC_ID_", "", kLetters, 2, 31},
    {"", "-raw-image", kLetters, 2, 30},
    {"com.vendor.product.", ".raw-photograph", kLetters, 2, 6},
    {"com.vendor.product", ".raw-photographs-", "0123456789", 3, 5},
    {"aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa", "ab", 9, 9},
    {"a", "z", kLetters, 2, 2},
});

// A run that fails must fail again.
std::mt19937 Reproducible() {
    return std::mt19937();  // NOLINT(cert-msc32-c,cert-msc51-cpp): predictable on purpose
}

std::string Draw(std::mt19937& random, const Recipe& recipe) {
    std::string text(recipe.beginning);
    const std::size_t length = recipe.shortest + random() % (recipe.longest - recipe.shortest + 1);
    for (std::size_t i = 0; i < length; ++i) {
        text += recipe.letters[random() % recipe.letters.size()];
    }
    return text.append(recipe.ending);
}

// Different texts, in the order in which they were drawn.
Strings DrawMany(std::mt19937& random, const Recipe& recipe, std::size_t count) {
    std::set<std::string> seen;
    Strings texts;
    while (texts.size() < count) {
        std::string text = Draw(random, recipe);
        if (seen.insert(text).second) {
            texts.push_back(std::move(text));
        }
    }
    return texts;
}

// A table that is only known while the program runs; its texts must outlive it.
template <std::size_t N>
struct Drawn {
    static constexpr std::size_t kSize = N;
    constexpr std::string_view At(std::size_t place) const { return texts.at(place); }

    std::array<std::string_view, N> texts;
};

template <std::size_t N>
using Index = TextIndex<Drawn<N>>;

template <std::size_t N>
Index<N> IndexOf(const Strings& texts) {
    Drawn<N> table;
    std::copy(texts.begin(), texts.end(), table.texts.begin());
    return Index<N>(table);
}

// Where each text stands.
using Places = std::map<std::string, std::size_t>;

Places PlacesOf(const Strings& texts) {
    Places places;
    for (std::size_t place = 0; place < texts.size(); ++place) {
        places[texts[place]] = place;
    }
    return places;
}

// Where a text stands among others, or how many there are.
std::size_t PlaceOf(const Places& places, const std::string& text) {
    const auto found = places.find(text);
    return found != places.end() ? found->second : places.size();
}

Strings Neighbours(const std::string& text) {
    Strings texts = Conf::Testing::OneCharacterOff(text, 'b');
    for (std::size_t size = 0; size < text.size(); ++size) {
        texts.push_back(text.substr(0, size));
        texts.push_back(text.substr(size));
    }
    for (const std::string& other : {text + "a", "a" + text, text + text, text + '\0', '\0' + text, text + " "}) {
        texts.push_back(other);
    }
    return texts;
}

// Each text must be found at its place from a copy of its own, and what resembles it only when it is another text.
template <std::size_t N>
void ExpectFinds(const Strings& texts) {
    ASSERT_EQ(texts.size(), N);
    const Index<N> index = IndexOf<N>(texts);
    const Places places = PlacesOf(texts);
    for (std::size_t place = 0; place < N; ++place) {
        EXPECT_EQ(index.Find(std::string(texts[place])), place) << texts[place];
        for (const std::string& neighbour : Neighbours(texts[place])) {
            EXPECT_EQ(index.Find(neighbour), PlaceOf(places, neighbour)) << neighbour;
        }
    }
}

template <std::size_t N>
void ExpectFindsForEveryRecipe() {
    for (const Recipe& recipe : kRecipes) {
        SCOPED_TRACE(std::string(recipe.beginning) + "..." + std::string(recipe.ending));
        std::mt19937 random = Reproducible();
        ExpectFinds<N>(DrawMany(random, recipe, N));
    }
}

TEST(TextIndexTest, Find_AmongTwo) { ExpectFindsForEveryRecipe<2>(); }

TEST(TextIndexTest, Find_AmongThree) { ExpectFindsForEveryRecipe<3>(); }

TEST(TextIndexTest, Find_AmongSixtyOne) { ExpectFindsForEveryRecipe<61>(); }

TEST(TextIndexTest, Find_AmongTwoHundred) { ExpectFindsForEveryRecipe<200>(); }

TEST(TextIndexTest, Find_AmongFourHundred) { ExpectFindsForEveryRecipe<400>(); }

template <std::size_t N>
void ExpectDoesNotFindOthers(const Recipe& recipe) {
    std::mt19937 random = Reproducible();
    const Strings drawn = DrawMany(random, recipe, 2 * N);
    const Strings texts(drawn.begin(), drawn.begin() + static_cast<std::ptrdiff_t>(N));
    const Index<N> index = IndexOf<N>(texts);
    for (std::size_t i = 0; i < 2 * N; ++i) {
        ASSERT_EQ(index.Find(drawn[i]), std::min(i, N)) << drawn[i];
    }
}

TEST(TextIndexTest, Find_OfATextMadeTheSameWayFindsNothing) {
    for (const Recipe& recipe : {kRecipes[0], kRecipes[7], kRecipes[8], kRecipes[9]}) {
        ExpectDoesNotFindOthers<2>(recipe);
        ExpectDoesNotFindOthers<3>(recipe);
        ExpectDoesNotFindOthers<61>(recipe);
        ExpectDoesNotFindOthers<200>(recipe);
        ExpectDoesNotFindOthers<400>(recipe);
    }
}

TEST(TextIndexTest, Find_TellsTextsApartThatDifferInOnePlaceOnly) {
    for (std::size_t length = 2; length <= 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            Strings texts(3, std::string(length, 'a'));
            texts[1][at] = 'b';
            texts[2][at] = 'B';
            ExpectFinds<3>(texts);
        }
    }
}

TEST(TextIndexTest, Find_TellsTextsApartThatBeginOneAnother) {
    constexpr std::string_view longest = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    Strings texts;
    for (std::size_t length = 2; length <= longest.size(); ++length) {
        texts.emplace_back(longest.substr(0, length));
    }
    ExpectFinds<61>(texts);
    std::reverse(texts.begin(), texts.end());
    ExpectFinds<61>(texts);
}

TEST(TextIndexTest, Find_OfTextsThatAreTooShortOrTooLongFindsNothing) {
    const Strings texts = {"aa", "ab", std::string(40, 'a')};
    const Index<3> index = IndexOf<3>(texts);
    EXPECT_EQ(index.Find(""), 3U);
    EXPECT_EQ(index.Find(std::string_view()), 3U);
    EXPECT_EQ(index.Find("a"), 3U);
    EXPECT_EQ(index.Find(std::string(39, 'a')), 3U);
    EXPECT_EQ(index.Find(std::string(40, 'a')), 2U);
    EXPECT_EQ(index.Find(std::string(41, 'a')), 3U);
    EXPECT_EQ(index.Find(std::string(100000, 'a')), 3U);
}

TEST(TextIndexTest, Find_TakesCharactersOfAnySign) {
    ExpectFinds<3>({"\xC3\xA4\xC3\xB6\xC3\xBC", "\xC3\xA4\xC3\xB6\xC3\xBD", "\x43\xA4\xC3\xB6\xC3\xBC"});
    ExpectFinds<3>({std::string("\0\0\1", 3), std::string("\0\1\0", 3), std::string("\1\0\0", 3)});
}

TEST(TextIndexTest, Find_LooksAtNoMoreThanTheText) {
    const Strings texts = {"avi", "aviation", "mp4"};
    const Index<3> index = IndexOf<3>(texts);
    constexpr std::string_view text = "xaviationx";
    EXPECT_EQ(index.Find(text.substr(1, 3)), 0U);
    EXPECT_EQ(index.Find(text.substr(1, 8)), 1U);
    EXPECT_EQ(index.Find(text.substr(1, 7)), 3U);
    EXPECT_EQ(index.Find(text), 3U);
}

TEST(TextIndexTest, Find_WorksWhileCompiling) {
    static constexpr Index<3> index(Drawn<3>{{"mp4", "matroska", "mp3"}});
    static_assert(index.Find("mp4") == 0);
    static_assert(index.Find("matroska") == 1);
    static_assert(index.Find("mp3") == 2);
    static_assert(index.Find("mp5") == 3);
    static_assert(index.Find("m") == 3);
    static_assert(index.Find("") == 3);
    const std::string text = "matroska";
    EXPECT_EQ(index.Find(text), 1U);
}

// A table as the library has them, and one of texts alone.
struct Row {
    int number;
    FixedText<8> text;
};

constexpr auto kRows = std::to_array<Row>({{1, "matroska"}, {2, "mp4"}, {3, "mov"}});
constexpr auto kTexts = std::to_array<FixedText<8>>({"flac", "matroska"});

TEST(TextIndexTest, Find_InAColumnOrAList) {
    static constexpr TextIndex<Column<kRows, &Row::text>> column;
    static_assert(column.Find("matroska") == 0 && column.Find("mp4") == 1 && column.Find("mov") == 2);
    static_assert(column.Contains("mov") && !column.Contains("MOV"));
    static constexpr TextIndex<TextList<kTexts>, CaselessWords> texts;
    EXPECT_EQ(texts.Find(std::string("FLAC")), 0U);
    EXPECT_EQ(texts.Find(std::string("Matroska")), 1U);
    EXPECT_FALSE(texts.Contains(std::string("flak")));
}

TEST(TextIndexTest, ATextThatStandsThereTwice_IsReported) {
    EXPECT_THROW(IndexOf<2>({"mp4", "mp4"}), std::logic_error);
    EXPECT_THROW(IndexOf<3>({"mp4", "mkv", "mp4"}), std::logic_error);
    std::mt19937 random = Reproducible();
    Strings texts = DrawMany(random, kRecipes[0], 200);
    texts[199] = texts[0];
    EXPECT_THROW(IndexOf<200>(texts), std::logic_error);
}

// Of these the hash sees the same characters, but not the same number of them.
TEST(TextIndexTest, Find_TellsTextsOfOneCharacterApartByTheirLength) {
    ExpectFinds<3>({"bb", std::string(20, 'a'), std::string(21, 'a')});
    ExpectFinds<3>({"ab", "aa", "aaa"});
    ExpectFinds<2>({"ab", std::string("ab\0\0", 4)});
}

constexpr TextIndex<Drawn<6>, CaselessWords> kCaseless(Drawn<6>{
    {"mp4", "Matroska", "ts", "quicktime-movie", "az@[`{", "\xC1\xDA"}});

TEST(TextIndexTest, Find_WithoutRegardToCase) {
    for (const char* text : {"mp4", "MP4", "mP4", "Mp4"}) {
        EXPECT_EQ(kCaseless.Find(text), 0U) << text;
    }
    EXPECT_EQ(kCaseless.Find("matroska"), 1U);
    EXPECT_EQ(kCaseless.Find("MATROSKA"), 1U);
    EXPECT_EQ(kCaseless.Find("tS"), 2U);
    EXPECT_EQ(kCaseless.Find("QuickTime-Movie"), 3U);
    EXPECT_EQ(kCaseless.Find("quicktime_movie"), 6U);
    EXPECT_EQ(kCaseless.Find("AZ@[`{"), 4U);
}

// The characters beside the letters, and bytes that are letters but for their eighth bit, differ by the same bit.
TEST(TextIndexTest, Find_WithoutRegardToCaseFoldsLettersOnly) {
    EXPECT_EQ(kCaseless.Find("az`[`{"), 6U);
    EXPECT_EQ(kCaseless.Find("az@{`{"), 6U);
    EXPECT_EQ(kCaseless.Find("az@[@{"), 6U);
    EXPECT_EQ(kCaseless.Find("az@[`["), 6U);
    EXPECT_EQ(kCaseless.Find("\xC1\xDA"), 5U);
    EXPECT_EQ(kCaseless.Find("\xE1\xDA"), 6U);
    EXPECT_EQ(kCaseless.Find("\xC1\xFA"), 6U);
    EXPECT_EQ(kCaseless.Find("mp\x14"), 6U);
}

TEST(TextIndexTest, Fold_LowersEachByteByItself) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::uint64_t lowered = byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
        for (unsigned place = 0; place < 64; place += 8) {
            for (const std::uint64_t others :
                 {std::uint64_t{0}, ~std::uint64_t{0}, std::uint64_t{0x7F7F7F7F7F7F7F7F}}) {
                const std::uint64_t around = others & ~(std::uint64_t{0xFF} << place);
                EXPECT_EQ(CaselessWords::Fold(around | std::uint64_t{byte} << place), around | lowered << place);
            }
        }
    }
}

TEST(TextIndexTest, ATextThatStandsThereTwiceButForItsCase_IsReported) {
    using Caseless = TextIndex<Drawn<2>, CaselessWords>;
    EXPECT_THROW(Caseless(Drawn<2>{{"mp4", "MP4"}}), std::logic_error);
}

RC_GTEST_PROP(TextIndexTest, Find_AgreesWithASearchFromTheStart, (unsigned seed, const std::string& other)) {
    std::mt19937 random(seed);
    const Recipe& recipe = kRecipes.at(*rc::gen::inRange<std::size_t>(0, kRecipes.size()));
    const Strings texts = DrawMany(random, recipe, 61);
    const Index<61> index = IndexOf<61>(texts);
    const Places places = PlacesOf(texts);
    const std::string again = Draw(random, recipe);
    RC_ASSERT(index.Find(again) == PlaceOf(places, again));
    RC_ASSERT(index.Find(other) == PlaceOf(places, other));
    for (std::size_t place = 0; place < texts.size(); ++place) {
        RC_ASSERT(index.Find(texts[place]) == place);
    }
}

}  // namespace
}  // namespace Quenzo::Detail
