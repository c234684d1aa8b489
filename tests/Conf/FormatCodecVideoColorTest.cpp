// Covers the colour characteristics and the pixel format of a video description.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Integers = std::numeric_limits<std::int32_t>;
using LongIntegers = std::numeric_limits<long long>;
using Codes = std::vector<std::int32_t>;

const Codes& ValidPrimaries() {
    static const Codes codes = {1, 5, 6, 9, 12};
    return codes;
}

const Codes& ValidTransfers() {
    static const Codes codes = {1, 4, 5, 6, 8, 13, 16, 18};
    return codes;
}

const Codes& ValidMatrices() {
    static const Codes codes = {0, 1, 5, 6, 7, 9};
    return codes;
}

bool Has(const Codes& codes, std::int32_t code) { return std::count(codes.begin(), codes.end(), code) != 0; }

ColorSpace Space(std::int32_t primaries, std::int32_t transfer, std::int32_t matrix) {
    return {ColorPrimaries{primaries}, TransferFunction{transfer}, YCbCrMatrix{matrix}};
}

Property ColorTree(long long primaries, long long transfer, long long matrix) {
    return VideoTree({Property("color_primaries", primaries), Property("color_transfer_function", transfer),
                      Property("color_matrix", matrix)});
}

// What each of the four getters says must be the same.
void ExpectSpace(const IFormatCodecVideo& video, const ColorSpace& expected) {
    EXPECT_EQ(video.GetColorSpace(), expected);
    EXPECT_EQ(video.GetColorPrimaries(), expected.primaries);
    EXPECT_EQ(video.GetColorTransferFunction(), expected.transfer);
    EXPECT_EQ(video.GetColorYCbCrMatrix(), expected.matrix);
}

void ExpectReads(const std::vector<Property>& children, const ColorSpace& expected) {
    ExpectSpace(*VideoWith(children), expected);
}

TEST(FormatCodecVideoColorTest, GetColorSpace_OfANewDescriptionIsUnspecified) {
    ExpectSpace(*IFormatCodecVideo::Create(), Space(2, 2, 2));
    EXPECT_EQ(ColorSpace(), Space(2, 2, 2));
}

TEST(FormatCodecVideoColorTest, GetColorSpace_DefaultsEachByItself) {
    const Property primaries("color_primaries", 9);
    const Property transfer("color_transfer_function", 16);
    const Property matrix("color_matrix", 7);
    ExpectReads({primaries}, Space(9, 2, 2));
    ExpectReads({transfer}, Space(2, 16, 2));
    ExpectReads({matrix}, Space(2, 2, 7));
    ExpectReads({primaries, transfer}, Space(9, 16, 2));
    ExpectReads({primaries, matrix}, Space(9, 2, 7));
    ExpectReads({transfer, matrix}, Space(2, 16, 7));
    ExpectReads({matrix, transfer, primaries}, Space(9, 16, 7));
}

TEST(FormatCodecVideoColorTest, GetColorSpace_ReadsCodesThatAreNotValid) {
    const auto read = [](long long number) {
        const auto space = VideoWith({Property("color_primaries", number), Property("color_transfer_function", number),
                                      Property("color_matrix", number)})
                               ->GetColorSpace();
        EXPECT_EQ(static_cast<int>(space.transfer), static_cast<int>(space.primaries));
        EXPECT_EQ(static_cast<int>(space.matrix), static_cast<int>(space.primaries));
        return static_cast<int>(space.primaries);
    };
    EXPECT_EQ(read(0), 0);
    EXPECT_EQ(read(3), 3);
    EXPECT_EQ(read(22), 22);
    EXPECT_EQ(read(-1), -1);
    EXPECT_EQ(read(1000000), 1000000);
    EXPECT_EQ(read(2147483647), 2147483647);
    EXPECT_EQ(read(4294967297), 1);
    EXPECT_EQ(read(4294967295), -1);
    EXPECT_EQ(read(LongIntegers::min()), 0);
}

TEST(FormatCodecVideoColorTest, GetColorSpace_OfAWrongTypeThrows) {
    const SP<IFormatCodecVideo> video = VideoWith(
        {Property("color_primaries", "1"), Property("color_transfer_function", true), Property("color_matrix")});
    ExpectWrongType([&] { video->GetColorPrimaries(); }, "color_primaries", PropertyTypes::String, "GetInt64");
    ExpectWrongType([&] { video->GetColorTransferFunction(); }, "color_transfer_function", PropertyTypes::Bool,
                    "GetInt64");
    ExpectWrongType([&] { video->GetColorYCbCrMatrix(); }, "color_matrix", PropertyTypes::Node, "GetInt64");
    ExpectWrongType([&] { video->GetColorSpace(); }, "color_primaries", PropertyTypes::String, "GetInt64");
    ExpectWrongType([] { VideoWith({Property("color_matrix", "1")})->GetColorSpace(); }, "color_matrix",
                    PropertyTypes::String, "GetInt64");
}

TEST(FormatCodecVideoColorTest, SetColorSpace_StoresThreeKeysInOrder) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetColorSpace({ColorPrimaries::BT2020, TransferFunction::SMPTE2084, YCbCrMatrix::BT2020_NCL});
    EXPECT_EQ(video->GetProperty(), ColorTree(9, 16, 9));
    video->SetColorSpace({ColorPrimaries::BT709, TransferFunction::IEC61966_2_1, YCbCrMatrix::IDENTITY});
    EXPECT_EQ(video->GetProperty(), ColorTree(1, 13, 0));
}

TEST(FormatCodecVideoColorTest, SetColorSpace_ReplacesInPlace) {
    const SP<IFormatCodecVideo> video =
        VideoWith({Property("color_matrix", "text"), Property("bitrate", 5), Property("color_primaries")});
    video->SetColorSpace(Space(1, 1, 1));
    EXPECT_EQ(video->GetProperty(),
              VideoTree({Property("color_matrix", 1), Property("bitrate", 5), Property("color_primaries", 1),
                         Property("color_transfer_function", 1)}));
}

TEST(FormatCodecVideoColorTest, SetColorSpace_OfAllValidCodesIsReadBack) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    for (const std::int32_t primaries : ValidPrimaries()) {
        for (const std::int32_t transfer : ValidTransfers()) {
            for (const std::int32_t matrix : ValidMatrices()) {
                video->SetColorSpace(Space(primaries, transfer, matrix));
                EXPECT_EQ(video->GetProperty(), ColorTree(primaries, transfer, matrix));
                ExpectSpace(*video, Space(primaries, transfer, matrix));
            }
        }
    }
}

// Stores the space or removes what was stored, as it should.
void ExpectStored(const ColorSpace& space, bool stored) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetColorSpace(Space(5, 4, 6));
    video->SetColorSpace(space);
    EXPECT_EQ(video->GetProperty(), stored ? ColorTree(static_cast<int>(space.primaries),
                                                       static_cast<int>(space.transfer), static_cast<int>(space.matrix))
                                           : VideoTree({}))
        << static_cast<int>(space.primaries) << ' ' << static_cast<int>(space.transfer) << ' '
        << static_cast<int>(space.matrix);
}

TEST(FormatCodecVideoColorTest, SetColorSpace_OfOneInvalidCodeRemovesAllThree) {
    Codes codes = {Integers::min(), Integers::min() + 1, Integers::max()};
    for (std::int32_t code = -40; code <= 300; ++code) {
        codes.push_back(code);
    }
    for (const std::int32_t code : codes) {
        ExpectStored(Space(code, 1, 1), Has(ValidPrimaries(), code));
        ExpectStored(Space(1, code, 1), Has(ValidTransfers(), code));
        ExpectStored(Space(1, 1, code), Has(ValidMatrices(), code));
    }
}

TEST(FormatCodecVideoColorTest, SetColorSpace_OfWhatANewDescriptionGivesRemovesTheKeys) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    const ColorSpace unspecified = video->GetColorSpace();
    video->SetColorSpace(unspecified);
    EXPECT_EQ(video->GetProperty(), VideoTree({}));
    video->SetColorSpace(Space(1, 1, 1));
    video->SetColorSpace(unspecified);
    EXPECT_EQ(video->GetProperty(), VideoTree({}));
}

TEST(FormatCodecVideoColorTest, SetColorSpace_OfAnInvalidSpaceRemovesWhicheverKeysThereAre) {
    const std::vector<Property> keys = {Property("color_primaries", 1), Property("color_transfer_function", "text"),
                                        Property("color_matrix", true)};
    for (unsigned present = 0; present < 8; ++present) {
        std::vector<Property> children = {Property("color_range", "x")};
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if ((present >> i & 1U) != 0) {
                children.push_back(keys[i]);
            }
        }
        children.emplace_back("color_depth", 8);
        const SP<IFormatCodecVideo> video = VideoWith(children);
        video->SetColorSpace(Space(1, 1, 2));
        EXPECT_EQ(video->GetProperty(), VideoTree({Property("color_range", "x"), Property("color_depth", 8)}));
    }
}

// Mostly codes that are valid, so that spaces which are valid as a whole are frequent.
rc::Gen<std::int32_t> AnyCode(const Codes& valid) {
    return rc::gen::weightedOneOf<std::int32_t>({{5, rc::gen::elementOf(valid)}, {1, rc::gen::inRange(-2, 25)}});
}

RC_GTEST_PROP(FormatCodecVideoColorTest, SetColorSpace_KeepsAllOrNothing, ()) {
    const auto primaries = *AnyCode(ValidPrimaries());
    const auto transfer = *AnyCode(ValidTransfers());
    const auto matrix = *AnyCode(ValidMatrices());
    const bool valid =
        Has(ValidPrimaries(), primaries) && Has(ValidTransfers(), transfer) && Has(ValidMatrices(), matrix);
    RC_CLASSIFY(valid);
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetColorSpace(Space(primaries, transfer, matrix));
    RC_ASSERT(video->GetColorSpace() == (valid ? Space(primaries, transfer, matrix) : Space(2, 2, 2)));
    RC_ASSERT(video->GetProperty() == (valid ? ColorTree(primaries, transfer, matrix) : VideoTree({})));
}

TEST(FormatCodecVideoColorTest, GetPixelFormat_OfANewDescriptionIsNone) {
    EXPECT_EQ(IFormatCodecVideo::Create()->GetPixelFormat(), PixFmt::NONE);
    EXPECT_EQ(static_cast<int>(IFormatCodecVideo::Create()->GetPixelFormat()), -1);
}

TEST(FormatCodecVideoColorTest, SetPixelFormat_IsReadBack) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    const auto expect = [&](PixFmt format, long long stored) {
        video->SetPixelFormat(format);
        EXPECT_EQ(video->GetProperty(), VideoTree({Property("PIXELFORMAT", stored)}));
        EXPECT_EQ(video->GetPixelFormat(), format);
    };
    expect(PixFmt::YUV420P, 0);
    expect(PixFmt::RGB24, 2);
    expect(PixFmt::_0RGB, 118);
    expect(PixFmt{1}, 1);
    expect(PixFmt{123456}, 123456);
    expect(PixFmt{Integers::max()}, 2147483647);
    expect(PixFmt{-2}, -2);
    expect(PixFmt{Integers::min()}, -2147483648LL);
}

TEST(FormatCodecVideoColorTest, SetPixelFormat_OfEverySupportedFormatIsReadBack) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    for (const PixFmt format : PixFmtDescription::s_supportedFormats) {
        video->SetPixelFormat(format);
        EXPECT_EQ(video->GetPixelFormat(), format);
        EXPECT_EQ(video->GetProperty()["PIXELFORMAT"].GetInt64(), static_cast<long long>(format));
    }
}

TEST(FormatCodecVideoColorTest, SetPixelFormat_OfNoneRemovesTheKey) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetPixelFormat(PixFmt::NONE);
    EXPECT_EQ(video->GetProperty(), VideoTree({}));
    EXPECT_EQ(video->GetPixelFormat(), PixFmt::NONE);
    video->SetPixelFormat(PixFmt::NV12);
    Put(*video, Property("bitrate", 5));
    video->SetPixelFormat(PixFmt{-1});
    EXPECT_EQ(video->GetProperty(), VideoTree({Property("bitrate", 5)}));
    EXPECT_EQ(video->GetPixelFormat(), PixFmt::NONE);
}

TEST(FormatCodecVideoColorTest, SetPixelFormat_ReplacesInPlace) {
    const SP<IFormatCodecVideo> video = VideoWith({Property("PIXELFORMAT", "RGB24"), Property("bitrate", 5)});
    video->SetPixelFormat(PixFmt::BGR24);
    EXPECT_EQ(video->GetProperty(), VideoTree({Property("PIXELFORMAT", 3), Property("bitrate", 5)}));
}

TEST(FormatCodecVideoColorTest, GetPixelFormat_KeepsTheLow32Bits) {
    const auto read = [](long long number) {
        return static_cast<int>(VideoWith({Property("PIXELFORMAT", number)})->GetPixelFormat());
    };
    EXPECT_EQ(read(-1), -1);
    EXPECT_EQ(read(-5), -5);
    EXPECT_EQ(read(4294967295), -1);
    EXPECT_EQ(read(4294967298), 2);
    EXPECT_EQ(read(2147483648), Integers::min());
}

TEST(FormatCodecVideoColorTest, GetPixelFormat_OfAWrongTypeThrows) {
    ExpectWrongType([] { VideoWith({Property("PIXELFORMAT", "RGB24")})->GetPixelFormat(); }, "PIXELFORMAT",
                    PropertyTypes::String, "GetInt64");
    ExpectWrongType([] { VideoWith({Property("PIXELFORMAT")})->GetPixelFormat(); }, "PIXELFORMAT", PropertyTypes::Node,
                    "GetInt64");
    EXPECT_EQ(VideoWith({Property("pixelformat", 2)})->GetPixelFormat(), PixFmt::NONE);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
