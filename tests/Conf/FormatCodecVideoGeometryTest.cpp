// Covers the geometry of a video description: size and pixel aspect as they are stored, conversions between pixel and
// frame aspect with their reduction and their 32-bit products, and the frame aspect of what is stored, against models.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Video = IFormatCodecVideo;
using Aspect = std::pair<unsigned, unsigned>;
using LongIntegers = std::numeric_limits<long long>;

constexpr unsigned kLargest = std::numeric_limits<unsigned>::max();

Property GeometryTree(long long width, long long height, long long aspectX, long long aspectY) {
    return StreamTree("format_codec_video",
                      {Property("cover_flag", false), Property("width", width), Property("height", height),
                       Property("aspect_x", aspectX), Property("aspect_y", aspectY)});
}

SP<Video> VideoOf(long long width, long long height, long long aspectX, long long aspectY) {
    const SP<Video> video = Video::Create();
    video->SetProperty(GeometryTree(width, height, aspectX, aspectY));
    return video;
}

Aspect ToPixel(unsigned width, unsigned height, unsigned frameX, unsigned frameY) {
    Aspect pixel = {77, 77};
    Video::FrameToPixelAspect(width, height, frameX, frameY, pixel.first, pixel.second);
    return pixel;
}

Aspect ToFrame(unsigned width, unsigned height, unsigned pixelX, unsigned pixelY) {
    Aspect frame = {77, 77};
    Video::PixelToFrameAspect(width, height, pixelX, pixelY, frame.first, frame.second);
    return frame;
}

Aspect StoredFrameAspect(const Video& video) { return {video.GetFrameAspectX(), video.GetFrameAspectY()}; }

Aspect FrameAspectOf(long long width, long long height, long long aspectX, long long aspectY) {
    return StoredFrameAspect(*VideoOf(width, height, aspectX, aspectY));
}

void ExpectByFrame(const Aspect& size, const Aspect& frame, const Aspect& storedPixel) {
    const SP<Video> video = Video::Create();
    video->InitByFrameAspect(size.first, size.second, frame.first, frame.second);
    EXPECT_EQ(video->GetProperty(), GeometryTree(size.first, size.second, storedPixel.first, storedPixel.second));
}

void ExpectByPixel(unsigned width, unsigned height, unsigned pixelX, unsigned pixelY) {
    const SP<Video> video = Video::Create();
    video->InitByPixelAspect(width, height, pixelX, pixelY);
    EXPECT_EQ(video->GetProperty(), GeometryTree(width, height, pixelX, pixelY));
    EXPECT_EQ(video->GetFrameInfo(), (FrameInfo{width, height, pixelX, pixelY}));
}

TEST(FormatCodecVideoGeometryTest, InitByFrameAspect_StoresTheReducedPixelAspect) {
    ExpectByFrame({720, 576}, {4, 3}, {16, 15});
    ExpectByFrame({720, 576}, {16, 9}, {64, 45});
    ExpectByFrame({720, 480}, {4, 3}, {8, 9});
    ExpectByFrame({1920, 1080}, {16, 9}, {1, 1});
    ExpectByFrame({1440, 1080}, {16, 9}, {4, 3});
}

TEST(FormatCodecVideoGeometryTest, InitByFrameAspect_OfNoAspectStoresZeros) {
    ExpectByFrame({720, 576}, {0, 0}, {0, 0});
    ExpectByFrame({1, 1}, {0, 0}, {0, 0});
    ExpectByFrame({kLargest, kLargest}, {0, 0}, {0, 0});
    ExpectByFrame({0, 0}, {16, 9}, {0, 0});
}

TEST(FormatCodecVideoGeometryTest, InitByFrameAspect_ReducesTheWrappedProduct) {
    // 70000 * 70000 is 605032704 more than 2^32.
    ExpectByFrame({70000, 1}, {1, 70000}, {1, 605032704});
    ExpectByFrame({70000, 2}, {1, 70000}, {1, 302516352});
    ExpectByFrame({2, 70000}, {70000, 1}, {302516352, 1});
    ExpectByFrame({65536, 1}, {1, 65536}, {1, 0});
    ExpectByFrame({1, 65536}, {65536, 1}, {0, 1});
    ExpectByFrame({65536, 65536}, {65536, 65536}, {0, 0});
    ExpectByFrame({kLargest, kLargest}, {kLargest, kLargest}, {1, 1});
}

TEST(FormatCodecVideoGeometryTest, InitByPixelAspect_StoresWhatItIsGiven) {
    ExpectByPixel(720, 576, 64, 45);
    ExpectByPixel(720, 576, 32, 30);
    ExpectByPixel(0, 0, 0, 0);
    ExpectByPixel(kLargest, 2147483648, kLargest, 4294967294);
}

TEST(FormatCodecVideoGeometryTest, InitByPixelAspect_ReplacesInPlace) {
    const SP<Video> video = Video::Create();
    video->SetProperty(Tree("x", {Property("aspect_y", "text"), Property("metadata"), Property("width", true),
                                  Property("stream_metadata")}));
    video->InitByPixelAspect(1, 2, 3, 4);
    EXPECT_EQ(video->GetProperty(),
              Tree("x", {Property("aspect_y", 4), Property("metadata"), Property("width", 1),
                         Property("stream_metadata"), Property("height", 2), Property("aspect_x", 3)}));
    video->InitByFrameAspect(1920, 1080, 4, 3);
    EXPECT_EQ(video->GetProperty(),
              Tree("x", {Property("aspect_y", 4), Property("metadata"), Property("width", 1920),
                         Property("stream_metadata"), Property("height", 1080), Property("aspect_x", 3)}));
}

TEST(FormatCodecVideoGeometryTest, FrameToPixelAspect_Reduces) {
    EXPECT_EQ(ToPixel(720, 576, 16, 9), Aspect(64, 45));
    EXPECT_EQ(ToPixel(720, 576, 4, 3), Aspect(16, 15));
    EXPECT_EQ(ToPixel(1920, 1080, 16, 9), Aspect(1, 1));
    EXPECT_EQ(ToPixel(1920, 1080, 32, 18), Aspect(1, 1));
    EXPECT_EQ(ToPixel(3, 5, 7, 11), Aspect(35, 33));
    EXPECT_EQ(ToPixel(70000, 1, 1, 70000), Aspect(1, 605032704));
}

TEST(FormatCodecVideoGeometryTest, PixelToFrameAspect_Reduces) {
    EXPECT_EQ(ToFrame(720, 576, 64, 45), Aspect(16, 9));
    EXPECT_EQ(ToFrame(720, 576, 16, 15), Aspect(4, 3));
    EXPECT_EQ(ToFrame(720, 576, 32, 30), Aspect(4, 3));
    EXPECT_EQ(ToFrame(1920, 1080, 1, 1), Aspect(16, 9));
    EXPECT_EQ(ToFrame(3, 5, 7, 11), Aspect(21, 55));
    EXPECT_EQ(ToFrame(70000, 1, 70000, 1), Aspect(605032704, 1));
    EXPECT_EQ(ToFrame(1, 70000, 2, 70000), Aspect(1, 302516352));
}

TEST(FormatCodecVideoGeometryTest, Reduction_OfZeros) {
    EXPECT_EQ(ToPixel(1, 1, 0, 0), Aspect(0, 0));
    EXPECT_EQ(ToPixel(1, 1, 0, 1), Aspect(0, 1));
    EXPECT_EQ(ToPixel(1, 1, 0, 2), Aspect(0, 1));
    EXPECT_EQ(ToPixel(1, 1, 0, kLargest), Aspect(0, 1));
    EXPECT_EQ(ToPixel(1, 1, 1, 0), Aspect(1, 0));
    EXPECT_EQ(ToPixel(1, 1, 2, 0), Aspect(1, 0));
    EXPECT_EQ(ToPixel(1, 1, kLargest, 0), Aspect(1, 0));
    EXPECT_EQ(ToFrame(1, 1, 0, 0), Aspect(0, 0));
    EXPECT_EQ(ToFrame(1, 1, 0, 1), Aspect(0, 1));
    EXPECT_EQ(ToFrame(1, 1, 0, 12), Aspect(0, 1));
    EXPECT_EQ(ToFrame(1, 1, 1, 0), Aspect(1, 0));
    EXPECT_EQ(ToFrame(1, 1, 12, 0), Aspect(1, 0));
}

TEST(FormatCodecVideoGeometryTest, Conversions_MayWriteOverTheirArguments) {
    unsigned x = 16;
    unsigned y = 9;
    Video::FrameToPixelAspect(720, 576, x, y, x, y);
    EXPECT_EQ(Aspect(x, y), Aspect(64, 45));
    Video::PixelToFrameAspect(720, 576, x, y, x, y);
    EXPECT_EQ(Aspect(x, y), Aspect(16, 9));
}

TEST(FormatCodecVideoGeometryTest, GetFrameAspect_IsThatOfTheStoredGeometry) {
    EXPECT_EQ(FrameAspectOf(720, 576, 32, 30), Aspect(4, 3));
    EXPECT_EQ(FrameAspectOf(720, 576, 64, 45), Aspect(16, 9));
    EXPECT_EQ(FrameAspectOf(1920, 1080, 1, 1), Aspect(16, 9));
    EXPECT_EQ(FrameAspectOf(7, 5, 1, 1), Aspect(7, 5));
    EXPECT_EQ(VideoOf(720, 576, 64, 45)->GetFrameAspect(), 16.0 / 9.0);
    EXPECT_EQ(VideoOf(720, 576, 32, 30)->GetFrameAspect(), 4.0 / 3.0);
    EXPECT_EQ(VideoOf(1, 1, kLargest, 1)->GetFrameAspect(), 4294967295.0);
    EXPECT_EQ(VideoOf(1, 1, 1, kLargest)->GetFrameAspect(), 1.0 / 4294967295.0);
}

TEST(FormatCodecVideoGeometryTest, GetFrameAspect_OfZeros) {
    EXPECT_EQ(FrameAspectOf(720, 576, 0, 0), Aspect(0, 0));
    EXPECT_EQ(FrameAspectOf(720, 576, 0, 1), Aspect(0, 1));
    EXPECT_EQ(FrameAspectOf(720, 576, 1, 0), Aspect(1, 0));
    EXPECT_EQ(FrameAspectOf(0, 1, 1, 1), Aspect(0, 1));
    EXPECT_EQ(FrameAspectOf(1, 0, 1, 1), Aspect(1, 0));
    EXPECT_TRUE(std::isnan(VideoOf(720, 576, 0, 0)->GetFrameAspect()));
    EXPECT_EQ(VideoOf(720, 576, 0, 1)->GetFrameAspect(), 0.0);
    EXPECT_EQ(VideoOf(720, 576, 1, 0)->GetFrameAspect(), std::numeric_limits<double>::infinity());
}

TEST(FormatCodecVideoGeometryTest, GetFrameAspect_TakesTheLow32BitsOfTheStoredProducts) {
    // 3000000000 * 3 is 410065408 more than 2 * 2^32.
    EXPECT_EQ(FrameAspectOf(3000000000, 1, 3, 2), Aspect(205032704, 1));
    EXPECT_EQ(FrameAspectOf(70000, 2, 70000, 1), Aspect(302516352, 1));
    EXPECT_EQ(FrameAspectOf(4294967296 + 16, 4294967296 + 9, 1, 1), Aspect(16, 9));
    EXPECT_EQ(FrameAspectOf(65536, 1, 65536, 1), Aspect(0, 1));
    EXPECT_EQ(FrameAspectOf(-1, 1, 2, 1), Aspect(4294967294, 1));
    EXPECT_EQ(FrameAspectOf(-1, -1, -16, -9), Aspect(16, 9));
    EXPECT_EQ(FrameAspectOf(LongIntegers::max(), 1, LongIntegers::max(), 1), Aspect(1, 1));
    EXPECT_EQ(FrameAspectOf(LongIntegers::min(), 1, LongIntegers::max(), 3), Aspect(0, 1));
    EXPECT_EQ(FrameAspectOf(LongIntegers::min(), LongIntegers::min(), LongIntegers::min(), -1), Aspect(0, 0));
}

TEST(FormatCodecVideoGeometryTest, GetFrameInfo_KeepsTheLow32Bits) {
    EXPECT_EQ(VideoOf(720, 576, 64, 45)->GetFrameInfo(), (FrameInfo{720, 576, 64, 45}));
    EXPECT_EQ(VideoOf(4294967296 + 5, -1, LongIntegers::min(), LongIntegers::max())->GetFrameInfo(),
              (FrameInfo{5, kLargest, 0, kLargest}));
    EXPECT_EQ(VideoOf(-4294967297, 2147483648, -2147483648LL, 4294967296)->GetFrameInfo(),
              (FrameInfo{kLargest, 2147483648, 2147483648, 0}));
}

template <typename Read>
void ExpectAllFourAreNeeded(const Read& read) {
    for (const std::string key : {"width", "height", "aspect_x", "aspect_y"}) {
        const SP<Video> missing = VideoOf(720, 576, 64, 45);
        Drop(*missing, key);
        ExpectMissing([&] { read(*missing); }, "format_codec_video", key);
        const SP<Video> text = VideoOf(720, 576, 64, 45);
        Put(*text, Property(key, "720"));
        ExpectWrongType([&] { read(*text); }, key, PropertyTypes::String, "GetInt64");
    }
}

TEST(FormatCodecVideoGeometryTest, Getters_NeedAllFourNumbers) {
    ExpectAllFourAreNeeded([](const Video& video) { video.GetFrameInfo(); });
    ExpectAllFourAreNeeded([](const Video& video) { video.GetFrameAspectX(); });
    ExpectAllFourAreNeeded([](const Video& video) { video.GetFrameAspectY(); });
    ExpectAllFourAreNeeded([](const Video& video) { video.GetFrameAspect(); });
}

TEST(FormatCodecVideoGeometryTest, GetFrameInfo_OfANewDescriptionThrows) {
    ExpectMissing([] { Video::Create()->GetFrameInfo(); }, "format_codec_video", "width");
    ExpectMissing([] { Video::Create()->GetFrameAspect(); }, "format_codec_video", "width");
}

// The rules once more, with the wrapping at 32 bits written out.
std::uint64_t Divisor(std::uint64_t a, std::uint64_t b) {
    while (b != 0) {
        a = std::exchange(b, a % b);
    }
    return a;
}

Aspect ModelReduced(std::uint64_t productX, std::uint64_t productY) {
    const std::uint64_t x = productX % 4294967296U;
    const std::uint64_t y = productY % 4294967296U;
    const std::uint64_t divisor = Divisor(x, y) < 2 ? 1 : Divisor(x, y);
    return {static_cast<unsigned>(x / divisor), static_cast<unsigned>(y / divisor)};
}

Aspect ModelOfProducts(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    return ModelReduced(a * b, c * d);
}

// Sizes and aspects as they are met, zeros, the ends of the range, and anything else.
rc::Gen<unsigned> AnyNumber() {
    return rc::gen::weightedOneOf<unsigned>({{3, rc::gen::inRange(0U, 20U)},
                                             {3, rc::gen::inRange(1U, 8193U)},
                                             {1, rc::gen::element(65535U, 65536U, 2147483648U, kLargest)},
                                             {2, rc::gen::arbitrary<unsigned>()},
                                             {1, rc::gen::inRange(0U, kLargest)}});
}

rc::Gen<long long> AnyStoredNumber() {
    return rc::gen::oneOf(rc::gen::cast<long long>(AnyNumber()), rc::gen::arbitrary<long long>(),
                          rc::gen::element(LongIntegers::min(), -1LL, 4294967296LL, LongIntegers::max()));
}

RC_GTEST_PROP(FormatCodecVideoGeometryTest, Conversions_AgreeWithTheModel, ()) {
    const auto [width, height, x, y] = *rc::gen::tuple(AnyNumber(), AnyNumber(), AnyNumber(), AnyNumber());
    RC_ASSERT(ToPixel(width, height, x, y) == ModelOfProducts(x, height, y, width));
    RC_ASSERT(ToFrame(width, height, x, y) == ModelOfProducts(x, width, y, height));
}

RC_GTEST_PROP(FormatCodecVideoGeometryTest, InitByFrameAspect_AgreesWithTheModel, ()) {
    const auto [width, height, x, y] = *rc::gen::tuple(AnyNumber(), AnyNumber(), AnyNumber(), AnyNumber());
    const SP<Video> video = Video::Create();
    video->InitByFrameAspect(width, height, x, y);
    const Aspect pixel = ModelOfProducts(x, height, y, width);
    RC_ASSERT(video->GetProperty() == GeometryTree(width, height, pixel.first, pixel.second));
    RC_ASSERT(video->GetFrameInfo() == (FrameInfo{width, height, pixel.first, pixel.second}));
}

RC_GTEST_PROP(FormatCodecVideoGeometryTest, GetFrameAspect_AgreesWithTheModel, ()) {
    const auto [width, height, x, y] =
        *rc::gen::tuple(AnyStoredNumber(), AnyStoredNumber(), AnyStoredNumber(), AnyStoredNumber());
    const auto number = [](long long stored) { return static_cast<std::uint64_t>(stored); };
    const SP<Video> video = VideoOf(width, height, x, y);
    const Aspect frame = ModelOfProducts(number(width), number(x), number(height), number(y));
    RC_ASSERT(StoredFrameAspect(*video) == frame);
    if (frame.second != 0) {
        RC_ASSERT(video->GetFrameAspect() == static_cast<double>(frame.first) / frame.second);
    }
}

RC_GTEST_PROP(FormatCodecVideoGeometryTest, GetFrameAspect_GivesBackWhatInitByFrameAspectGot, ()) {
    // Small enough for every product to fit.
    const auto size = rc::gen::inRange(1U, 8193U);
    const auto aspect = rc::gen::inRange(1U, 64U);
    const auto [width, height, x, y] = *rc::gen::tuple(size, size, aspect, aspect);
    const SP<Video> video = Video::Create();
    video->InitByFrameAspect(width, height, x, y);
    RC_ASSERT(StoredFrameAspect(*video) == ModelReduced(x, y));
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
