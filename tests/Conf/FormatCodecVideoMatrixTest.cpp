// Covers the display matrix of a video description: the text that it is stored as, the matrices that count as none, and
// the texts that cannot be read.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Entries = std::array<std::int32_t, 9>;
using Integers = std::numeric_limits<std::int32_t>;

constexpr Entries kIdentity = {65536, 0, 0, 0, 65536, 0, 0, 0, 1073741824};

Property MatrixTree(const std::string& text) { return VideoTree({Property("DISPLAYMATRIX", text)}); }

DisplayMatrix Matrix(const Entries& entries) {
    DisplayMatrix matrix;
    matrix.m = entries;
    return matrix;
}

void ExpectReads(const std::string& text, const Entries& expected) {
    const SP<IFormatCodecVideo> video = VideoWith({Property("DISPLAYMATRIX", text)});
    EXPECT_TRUE(video->ExistsDisplayMatrix());
    EXPECT_EQ(video->GetDisplayMatrix().m, expected) << '"' << text << '"';
    EXPECT_EQ(video->GetProperty(), MatrixTree(text));
}

void ExpectUnreadable(const std::string& text) { ExpectReads(text, kIdentity); }

// One piece among eight good ones, first, in the middle and last.
void ExpectUnreadablePiece(const std::string& piece) {
    ExpectUnreadable(piece + ":2:3:4:5:6:7:8:9");
    ExpectUnreadable("1:2:3:4:" + piece + ":6:7:8:9");
    ExpectUnreadable("1:2:3:4:5:6:7:8:" + piece);
}

void ExpectStores(const DisplayMatrix& matrix, const std::string& text) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetDisplayMatrix(matrix);
    EXPECT_EQ(video->GetProperty(), MatrixTree(text));
    EXPECT_TRUE(video->ExistsDisplayMatrix());
    EXPECT_EQ(video->GetDisplayMatrix(), matrix);
}

void ExpectRemoves(const Entries& entries) {
    const SP<IFormatCodecVideo> fresh = IFormatCodecVideo::Create();
    fresh->SetDisplayMatrix(Matrix(entries));
    EXPECT_EQ(fresh->GetProperty(), VideoTree({}));
    const SP<IFormatCodecVideo> video = VideoWith({Property("DISPLAYMATRIX", "1:2:3:4:5:6:7:8:9")});
    Put(*video, Property("bitrate", 5));
    video->SetDisplayMatrix(Matrix(entries));
    EXPECT_EQ(video->GetProperty(), VideoTree({Property("bitrate", 5)}));
    EXPECT_FALSE(video->ExistsDisplayMatrix());
    EXPECT_EQ(video->GetDisplayMatrix().m, kIdentity);
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_OfANewDescriptionIsTheIdentity) {
    const SP<const IFormatCodecVideo> video = IFormatCodecVideo::Create();
    EXPECT_FALSE(video->ExistsDisplayMatrix());
    EXPECT_EQ(video->GetDisplayMatrix().m, kIdentity);
    EXPECT_EQ(video->GetProperty(), VideoTree({}));
}

TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_StoresNineNumbers) {
    ExpectStores(Matrix({0, 65536, 0, -65536, 0, 0, 0, 0, 1073741824}), "0:65536:0:-65536:0:0:0:0:1073741824");
    ExpectStores(DisplayMatrix(ImageOrientation::Rotated90), "0:65536:0:-65536:0:0:0:0:1073741824");
    ExpectStores(DisplayMatrix(ImageOrientation::MirroredHorizontally), "-65536:0:0:0:65536:0:0:0:1073741824");
    ExpectStores(Matrix({1, 2, 3, 4, 5, 6, 7, 8, 9}), "1:2:3:4:5:6:7:8:9");
    ExpectStores(Matrix({-1, -2, -3, -4, -5, -6, -7, -8, -9}), "-1:-2:-3:-4:-5:-6:-7:-8:-9");
    ExpectStores(Matrix({0, 0, 0, 0, 0, 0, 0, 0, 0}), "0:0:0:0:0:0:0:0:0");
    ExpectStores(Matrix({Integers::min(), Integers::max(), 0, Integers::max(), Integers::min(), 0, Integers::min(),
                         Integers::max(), Integers::min()}),
                 "-2147483648:2147483647:0:2147483647:-2147483648:0:-2147483648:2147483647:-2147483648");
}

TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_KeepsTheTranslationOfATurnedMatrix) {
    ExpectStores(Matrix({0, 65536, 0, -65536, 0, 0, 37748736, -1, 1073741824}),
                 "0:65536:0:-65536:0:0:37748736:-1:1073741824");
}

TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_OneStepFromTheIdentityIsStored) {
    ExpectStores(Matrix({65537, 0, 0, 0, 65536, 0, 0, 0, 1073741824}), "65537:0:0:0:65536:0:0:0:1073741824");
    ExpectStores(Matrix({65536, -1, 0, 0, 65536, 0, 0, 0, 1073741824}), "65536:-1:0:0:65536:0:0:0:1073741824");
    ExpectStores(Matrix({65536, 0, 0, 1, 65536, 0, 0, 0, 1073741824}), "65536:0:0:1:65536:0:0:0:1073741824");
    ExpectStores(Matrix({65536, 0, 0, 0, 65535, 0, 0, 0, 1073741824}), "65536:0:0:0:65535:0:0:0:1073741824");
}

TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_OfTheDefaultRemovesTheKey) { ExpectRemoves(kIdentity); }

// Only the linear part counts.
TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_OfATranslationOnlyRemovesTheKey) {
    ExpectRemoves({65536, 0, 0, 0, 65536, 0, 6553600, 3276800, 1073741824});
    ExpectRemoves({65536, 0, 1, 0, 65536, 0, 0, 0, 1073741824});
    ExpectRemoves({65536, 0, 0, 0, 65536, -1, 0, 0, 1073741824});
    ExpectRemoves({65536, 0, 0, 0, 65536, 0, 0, 0, 0});
    ExpectRemoves({65536, 0, 9, 0, 65536, 9, 9, 9, 9});
}

TEST(FormatCodecVideoMatrixTest, SetDisplayMatrix_ReplacesInPlace) {
    const SP<IFormatCodecVideo> video = VideoWith({Property("DISPLAYMATRIX", true)});
    Put(*video, Property("bitrate", 5));
    video->SetDisplayMatrix(Matrix({1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(video->GetProperty(),
              VideoTree({Property("DISPLAYMATRIX", "1:2:3:4:5:6:7:8:9"), Property("bitrate", 5)}));
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_ReadsNineIntegers) {
    ExpectReads("0:65536:0:-65536:0:0:0:0:1073741824", {0, 65536, 0, -65536, 0, 0, 0, 0, 1073741824});
    ExpectReads("1:2:3:4:5:6:7:8:9", {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ExpectReads("001:-002:-0:0:007:6:7:8:000000000000000009", {1, -2, 0, 0, 7, 6, 7, 8, 9});
    ExpectReads("-2147483648:2147483647:0:0:0:0:0:0:-2147483648",
                {Integers::min(), Integers::max(), 0, 0, 0, 0, 0, 0, Integers::min()});
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_ReadsATextThatSpellsTheDefault) {
    ExpectReads("65536:0:0:0:65536:0:0:0:1073741824", kIdentity);
    ExpectReads("65536:0:9:0:65536:9:9:9:9", {65536, 0, 9, 0, 65536, 9, 9, 9, 9});
}

// A separator after the last piece starts no other.
TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_AllowsOneSeparatorAtTheEnd) {
    ExpectReads("1:2:3:4:5:6:7:8:9:", {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ExpectUnreadable("1:2:3:4:5:6:7:8:9::");
    ExpectUnreadable("1:2:3:4:5:6:7:8::");
    ExpectUnreadable("1:2:3:4:5:6:7:8:");
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_OfAnotherNumberOfPiecesIsTheIdentity) {
    ExpectUnreadable("");
    ExpectUnreadable(":");
    ExpectUnreadable("1");
    ExpectUnreadable("1:2:3:4:5:6:7:8");
    ExpectUnreadable("1:2:3:4:5:6:7:8:9:10");
    ExpectUnreadable(":1:2:3:4:5:6:7:8:9");
    ExpectUnreadable("1:2:3:4::5:6:7:8:9");
    ExpectUnreadable(":::::::::");
    ExpectUnreadable("1,2,3,4,5,6,7,8,9");
    ExpectUnreadable("1 2 3 4 5 6 7 8 9");
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_OfAPieceThatIsNoIntegerIsTheIdentity) {
    ExpectUnreadablePiece("");
    ExpectUnreadablePiece("-");
    ExpectUnreadablePiece("+1");
    ExpectUnreadablePiece("--1");
    ExpectUnreadablePiece(" 1");
    ExpectUnreadablePiece("1 ");
    ExpectUnreadablePiece("\t1");
    ExpectUnreadablePiece("1\n");
    ExpectUnreadablePiece("1e3");
    ExpectUnreadablePiece("1.0");
    ExpectUnreadablePiece("0x10");
    ExpectUnreadablePiece("1'000");
    ExpectUnreadablePiece("one");
    ExpectUnreadablePiece("NaN");
    ExpectUnreadablePiece(std::string(1, '\0'));
    ExpectUnreadablePiece(std::string("1\0", 2));
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_OfAnIntegerBeyond32BitsIsTheIdentity) {
    ExpectUnreadablePiece("2147483648");
    ExpectUnreadablePiece("-2147483649");
    ExpectUnreadablePiece("4294967296");
    ExpectUnreadablePiece("9223372036854775808");
    ExpectUnreadablePiece("100000000000000000000000000000000");
}

TEST(FormatCodecVideoMatrixTest, GetDisplayMatrix_OfAWrongTypeThrows) {
    ExpectWrongType([] { VideoWith({Property("DISPLAYMATRIX", 5)})->GetDisplayMatrix(); }, "DISPLAYMATRIX",
                    PropertyTypes::Int64, "GetString");
    ExpectWrongType([] { VideoWith({Property("DISPLAYMATRIX")})->GetDisplayMatrix(); }, "DISPLAYMATRIX",
                    PropertyTypes::Node, "GetString");
    EXPECT_TRUE(VideoWith({Property("DISPLAYMATRIX", 5)})->ExistsDisplayMatrix());
    EXPECT_FALSE(VideoWith({Property("displaymatrix", "x")})->ExistsDisplayMatrix());
}

rc::Gen<std::int32_t> AnyEntry() {
    return rc::gen::oneOf(rc::gen::element(0, 65536, -65536, 1073741824, Integers::min(), Integers::max()),
                          rc::gen::arbitrary<std::int32_t>());
}

RC_GTEST_PROP(FormatCodecVideoMatrixTest, SetDisplayMatrix_IsReadBackUnlessItCountsAsDefault, ()) {
    const auto entries = *rc::gen::container<Entries>(AnyEntry());
    const bool isDefault = entries[0] == 65536 && entries[1] == 0 && entries[3] == 0 && entries[4] == 65536;
    std::string text;
    for (const std::int32_t entry : entries) {
        text += (text.empty() ? "" : ":") + std::to_string(entry);
    }
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetDisplayMatrix(Matrix(entries));
    RC_ASSERT(video->GetProperty() == (isDefault ? VideoTree({}) : MatrixTree(text)));
    RC_ASSERT(video->GetDisplayMatrix().m == (isDefault ? kIdentity : entries));
}

// A minus sign or none, then one to fifteen digits.
bool IsInteger(const std::string& text) {
    const std::string digits = text.substr(text.starts_with('-') ? 1 : 0);
    return !digits.empty() && digits.size() <= 15 && digits.find_first_not_of("0123456789") == std::string::npos;
}

// What the text stands for, with the standard library's own reading of lines and numbers.
Entries ModelOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::int32_t> numbers;
    for (std::string piece; std::getline(stream, piece, ':');) {
        const long long number = IsInteger(piece) ? std::stoll(piece) : Integers::max() + 1LL;
        if (number < Integers::min() || number > Integers::max()) {
            return kIdentity;
        }
        numbers.push_back(static_cast<std::int32_t>(number));
    }
    Entries entries = kIdentity;
    if (numbers.size() == entries.size()) {
        std::copy(numbers.begin(), numbers.end(), entries.begin());
    }
    return entries;
}

RC_GTEST_PROP(FormatCodecVideoMatrixTest, GetDisplayMatrix_AgreesWithTheModel, ()) {
    const auto good = rc::gen::element<std::string>("0", "-0", "007", "-65536", "2147483647", "-2147483648");
    const auto bad = rc::gen::element<std::string>("", "-", "+1", " 1", "1e3", "2147483648", "-2147483649", "x");
    const auto piece = rc::gen::weightedOneOf<std::string>({{40, good}, {1, bad}});
    const int count = *rc::gen::weightedElement<int>({{1, 0}, {1, 1}, {2, 8}, {8, 9}, {2, 10}});
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ":") + *piece;
    }
    text += *rc::gen::weightedElement<std::string>({{4, ""}, {1, ":"}, {1, "::"}});
    const Entries expected = ModelOf(text);
    RC_CLASSIFY(expected != kIdentity, "can be read");
    RC_ASSERT(VideoWith({Property("DISPLAYMATRIX", text)})->GetDisplayMatrix().m == expected);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
