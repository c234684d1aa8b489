// Identifiers as people type them: which exact form is meant, and which ones look alike.

#include <tools/Failure.h>
#include <tools/Identifiers.h>
#include <tools/Vocabulary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Quenzo::Tools {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

IdentifierKind Fruits() {
    return {"fruit", "FRUIT_", "fruits", {"FRUIT_APPLE", "FRUIT_PEAR", "FRUIT_RED_PEAR"}, {"malus", "pyrus", "pyrus"}};
}

void ExpectNone(const IdentifierKind& kind, const std::string& typed, const std::string& message) {
    try {
        FindExact(kind, typed);
        ADD_FAILURE() << typed << " was found";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.GetStatus(), ExitStatus::No);
        EXPECT_EQ(failure.what(), message);
    }
}

TEST(FindExact, TakesAnyCaseAndNoPrefix) {
    for (const char* typed : {"FRUIT_APPLE", "fruit_apple", "apple", "Apple", "APPLE", "fruit-apple", " apple "}) {
        EXPECT_EQ(FindExact(Fruits(), typed), "FRUIT_APPLE") << typed;
    }
}

TEST(FindExact, TakesAnySignForAnUnderscore) {
    for (const char* typed : {"red_pear", "red pear", "red-pear", "RED.PEAR", "redpear"}) {
        EXPECT_EQ(FindExact(Fruits(), typed), "FRUIT_RED_PEAR") << typed;
    }
}

TEST(FindExact, TakesAnotherNameThatOneHas) { EXPECT_EQ(FindExact(Fruits(), "Malus"), "FRUIT_APPLE"); }

TEST(FindExact, NamesAllThatShareAnotherName) {
    ExpectNone(Fruits(), "pyrus", "there is no fruit \"pyrus\"; the nearest: FRUIT_PEAR, FRUIT_RED_PEAR");
}

TEST(FindExact, NamesTheNearest) {
    ExpectNone(Fruits(), "peer", "there is no fruit \"peer\"; the nearest: FRUIT_PEAR");
    ExpectNone(Fruits(), "aplpe", "there is no fruit \"aplpe\"; the nearest: FRUIT_APPLE");
}

TEST(FindExact, NamesTheListWhenNothingIsNear) {
    ExpectNone(Fruits(), "melon", "there is no fruit \"melon\" (quenzo-conf fruits lists them)");
    ExpectNone(Fruits(), "", "there is no fruit \"\" (quenzo-conf fruits lists them)");
    ExpectNone(Fruits(), "FRUIT_", "there is no fruit \"FRUIT_\" (quenzo-conf fruits lists them)");
}

TEST(FindExact, NamesAllWhenTheyAreFewAndNoCommandListsThem) {
    IdentifierKind kind{
        "digit", "", "", {"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"}, {}};
    ExpectNone(kind, "hundred",
               "there is no digit \"hundred\"; there is one, two, three, four, five, six, seven, eight, nine, ten");
    kind.all.emplace_back("eleven");
    ExpectNone(kind, "hundred", "there is no digit \"hundred\"");
}

TEST(FindNearest, CountsASwapAsOneMistake) { EXPECT_THAT(FindNearest(Fruits(), "paer"), ElementsAre("FRUIT_PEAR")); }

TEST(FindNearest, PutsTheBestFirst) {
    const IdentifierKind kind{"word", "", "", {"abcdef", "abcdxx", "abcdex"}, {}};
    EXPECT_THAT(FindNearest(kind, "abcdey"), ElementsAre("abcdef", "abcdex", "abcdxx"));
}

TEST(FindNearest, NamesAtMostFiveAndNoneTwice) {
    const IdentifierKind kind{"word", "", "", {"aab", "aac", "aac", "aad", "aae", "aaf", "aag"}, {}};
    EXPECT_THAT(FindNearest(kind, "aax"), ElementsAre("aab", "aac", "aad", "aae", "aaf"));
}

TEST(FindNearest, FindsNothingInWhatIsTooDifferent) {
    EXPECT_THAT(FindNearest(Fruits(), "xy"), IsEmpty());
    EXPECT_THAT(FindNearest(Fruits(), "pexx"), IsEmpty());
}

TEST(FindNearest, FindsNothingForFewerThanThreeLettersAndDigits) {
    const IdentifierKind kind{"word", "w_", "", {"*", "ab", "abc", "abcd"}, {}};
    for (const char* typed : {"", ".", "a b", "ac", "W_ab"}) {
        EXPECT_THAT(FindNearest(kind, typed), IsEmpty()) << typed;
    }
    EXPECT_THAT(FindNearest(kind, "abx"), ElementsAre("ab", "abc"));
}

TEST(Vocabulary, EveryIdentifierIsItsOwnExactForm) {
    for (const IdentifierKind& kind : {CodecIdentifiers(), FormatIdentifiers(), ExtensionIdentifiers(),
                                       UtiIdentifiers(), PixelFormatIdentifiers()}) {
        for (const std::string& identifier : kind.all) {
            EXPECT_EQ(FindExact(kind, identifier), identifier) << kind.name;
        }
    }
}

TEST(Vocabulary, EveryCodecAndContainerHasAMeaning) {
    EXPECT_EQ(AllCodecs().size(), 364U);
    EXPECT_EQ(AllFormats().size(), 195U);
    for (const Term& term : AllCodecs()) {
        EXPECT_EQ(MeaningOfCodec(term.id), term.meaning);
        EXPECT_TRUE(term.meaning.ends_with('.')) << term.id;
    }
    for (const Term& term : AllFormats()) {
        EXPECT_EQ(MeaningOfFormat(term.id), term.meaning);
        EXPECT_TRUE(term.meaning.ends_with('.')) << term.id;
    }
    EXPECT_EQ(MeaningOfCodec("CODEC_ID_UNHEARD_OF"), "");
    EXPECT_EQ(MeaningOfFormat("unheard-of"), "");
}

}  // namespace
}  // namespace Quenzo::Tools
