// Covers the description of a video stream apart from geometry, colour and display matrix: the frame rate, the
// spherical info, and the switches for two passes, grids and hardware.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <boost/rational.hpp>
#include <boost/throw_exception.hpp>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Ratio = boost::rational<long long>;
using Integers = std::numeric_limits<std::int32_t>;
using LongIntegers = std::numeric_limits<long long>;

constexpr unsigned kLargest = std::numeric_limits<unsigned>::max();

// Three plain numbers, in the order yaw, pitch, roll.
static_assert(sizeof(SphericalInfo) == 12 && std::is_aggregate_v<SphericalInfo>);
static_assert(std::is_same_v<decltype(SphericalInfo::yaw), std::int32_t>);

SP<IFormatCodecVideo> NewVideo() { return IFormatCodecVideo::Create(); }

Property RateTree(const Ratio& rate, const Ratio& timeBase) {
    return VideoTree({Property("frameRateRatio", rate), Property("stream_timebase", timeBase)});
}

void ExpectFrameRate(const Ratio& rate, const Ratio& timeBase) {
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetFrameRate(rate);
    EXPECT_EQ(video->GetProperty(), RateTree(rate, timeBase));
}

void ExpectFrameRate(unsigned num, unsigned den, const Ratio& rate, const Ratio& timeBase) {
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetFrameRate(num, den);
    EXPECT_EQ(video->GetProperty(), RateTree(rate, timeBase));
}

TEST(FormatCodecVideoTest, SetFrameRate_StoresTheRateAndThenItsReciprocal) {
    ExpectFrameRate(Ratio(25), Ratio(1, 25));
    ExpectFrameRate(Ratio(50, 2), Ratio(1, 25));
    ExpectFrameRate(Ratio(30000, 1001), Ratio(1001, 30000));
    ExpectFrameRate(Ratio(1, 10), Ratio(10));
    ExpectFrameRate(Ratio(1), Ratio(1));
    ExpectFrameRate(25, 1, Ratio(25), Ratio(1, 25));
    ExpectFrameRate(50, 2, Ratio(25), Ratio(1, 25));
    ExpectFrameRate(30000, 1001, Ratio(30000, 1001), Ratio(1001, 30000));
    ExpectFrameRate(60000, 2002, Ratio(30000, 1001), Ratio(1001, 30000));
}

TEST(FormatCodecVideoTest, SetFrameRate_ThatIsNotPositiveStoresATimeBaseOfZero) {
    ExpectFrameRate(Ratio(0), Ratio(0));
    ExpectFrameRate(Ratio(-25), Ratio(0));
    ExpectFrameRate(Ratio(-30000, 1001), Ratio(0));
    ExpectFrameRate(Ratio(1, -2), Ratio(0));
    ExpectFrameRate(0, 1, Ratio(0), Ratio(0));
    ExpectFrameRate(0, 5, Ratio(0), Ratio(0));
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetFrameRate(0, 1);
    EXPECT_EQ(video->GetProperty()["stream_timebase"].GetRatio().numerator(), 0);
    EXPECT_EQ(video->GetProperty()["stream_timebase"].GetRatio().denominator(), 1);
}

TEST(FormatCodecVideoTest, SetFrameRate_AtTheEndsOfTheRange) {
    ExpectFrameRate(Ratio(LongIntegers::max()), Ratio(1, LongIntegers::max()));
    ExpectFrameRate(Ratio(1, LongIntegers::max()), Ratio(LongIntegers::max()));
    ExpectFrameRate(Ratio(LongIntegers::max(), LongIntegers::max() - 1),
                    Ratio(LongIntegers::max() - 1, LongIntegers::max()));
    ExpectFrameRate(Ratio(LongIntegers::min()), Ratio(0));
    ExpectFrameRate(Ratio(LongIntegers::min(), LongIntegers::max()), Ratio(0));
    ExpectFrameRate(kLargest, 1, Ratio(4294967295), Ratio(1, 4294967295));
    ExpectFrameRate(1, kLargest, Ratio(1, 4294967295), Ratio(4294967295));
    ExpectFrameRate(kLargest, kLargest, Ratio(1), Ratio(1));
    ExpectFrameRate(2147483648, 2, Ratio(1073741824), Ratio(1, 1073741824));
}

TEST(FormatCodecVideoTest, SetFrameRate_ReplacesInPlace) {
    const SP<IFormatCodecVideo> video =
        VideoWith({Property("stream_timebase", "text"), Property("bitrate", 5), Property("frameRateRatio", 25)});
    video->SetFrameRate(24, 1);
    EXPECT_EQ(video->GetProperty(), VideoTree({Property("stream_timebase", Ratio(1, 24)), Property("bitrate", 5),
                                               Property("frameRateRatio", Ratio(24))}));
}

TEST(FormatCodecVideoTest, SetFrameRate_TakesTheRateOfTheDescriptionItself) {
    const SP<IFormatCodecVideo> video = VideoWith({Property("frameRateRatio", Ratio(30000, 1001))});
    video->SetFrameRate(video->GetProperty()["frameRateRatio"].GetRatio());
    EXPECT_EQ(video->GetProperty(), RateTree(Ratio(30000, 1001), Ratio(1001, 30000)));
}

void ExpectBadRate(IFormatCodecVideo& video, unsigned num) {
    const Property before = video.GetProperty();
    try {
        video.SetFrameRate(num, 0);
        ADD_FAILURE() << "nothing was raised";
    } catch (const boost::wrapexcept<boost::bad_rational>& failure) {
        EXPECT_STREQ(failure.what(), "bad rational: zero denominator");
        EXPECT_NE(boost::get_error_info<Exception::TagCallStack>(failure), nullptr);
        EXPECT_STREQ(*boost::get_error_info<boost::throw_file>(failure), "Conf/Interfaces/IFormatCodecVideo.cpp");
    }
    EXPECT_EQ(video.GetProperty(), before);
}

TEST(FormatCodecVideoTest, SetFrameRate_WithDenominatorZeroThrowsAndChangesNothing) {
    const SP<IFormatCodecVideo> video = NewVideo();
    ExpectBadRate(*video, 0);
    ExpectBadRate(*video, 25);
    ExpectBadRate(*video, kLargest);
    video->SetFrameRate(25, 1);
    ExpectBadRate(*video, 30);
    EXPECT_EQ(video->GetProperty(), RateTree(Ratio(25), Ratio(1, 25)));
}

RC_GTEST_PROP(FormatCodecVideoTest, SetFrameRate_OfPositiveRatesSwapsTheTwoNumbers, ()) {
    const auto positive = rc::gen::oneOf(rc::gen::inRange(1LL, 100000LL), rc::gen::inRange(1LL, LongIntegers::max()));
    const Ratio rate(*positive, *positive);
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetFrameRate(rate);
    RC_ASSERT(video->GetProperty()["frameRateRatio"].GetRatio() == rate);
    const Ratio timeBase = video->GetProperty()["stream_timebase"].GetRatio();
    RC_ASSERT(timeBase.numerator() == rate.denominator());
    RC_ASSERT(timeBase.denominator() == rate.numerator());
}

RC_GTEST_PROP(FormatCodecVideoTest, SetFrameRate_OfTwoNumbersIsThatOfTheirQuotient, (unsigned num)) {
    const auto den = *rc::gen::inRange(1U, kLargest);
    const SP<IFormatCodecVideo> one = NewVideo();
    const SP<IFormatCodecVideo> two = NewVideo();
    one->SetFrameRate(num, den);
    two->SetFrameRate(Ratio(num, den));
    RC_ASSERT(one->GetProperty() == two->GetProperty());
}

TEST(FormatCodecVideoTest, SphericalInfo_IsEqualWhenAllThreeAre) {
    const SphericalInfo info = {1, 2, 3};
    EXPECT_EQ(info.yaw, 1);
    EXPECT_EQ(info.pitch, 2);
    EXPECT_EQ(info.roll, 3);
    EXPECT_TRUE(info == (SphericalInfo{1, 2, 3}));
    EXPECT_FALSE(info != (SphericalInfo{1, 2, 3}));
    EXPECT_TRUE(info != (SphericalInfo{0, 2, 3}));
    EXPECT_TRUE(info != (SphericalInfo{1, 0, 3}));
    EXPECT_TRUE(info != (SphericalInfo{1, 2, 0}));
    EXPECT_FALSE(info == (SphericalInfo{3, 2, 1}));
    EXPECT_EQ(SphericalInfo(), (SphericalInfo{0, 0, 0}));
}

Property SphericalNode(std::vector<Property> children) { return Tree("SPHERICAL_INFO", std::move(children)); }

Property SphericalNode(long long yaw, long long pitch, long long roll) {
    return SphericalNode(
        {Property("SPHERICAL_YAW", yaw), Property("SPHERICAL_PITCH", pitch), Property("SPHERICAL_ROLL", roll)});
}

TEST(FormatCodecVideoTest, SetSphericalInfo_StoresANodeOfThree) {
    const SP<IFormatCodecVideo> video = NewVideo();
    EXPECT_FALSE(video->SphericalInfoExist());
    video->SetSphericalInfo({-90, 45, 180});
    EXPECT_TRUE(video->SphericalInfoExist());
    EXPECT_EQ(video->GetProperty(), VideoTree({SphericalNode(-90, 45, 180)}));
    EXPECT_EQ(video->GetSphericalInfo(), (SphericalInfo{-90, 45, 180}));
    video->SetSphericalInfo({Integers::min(), -1, Integers::max()});
    EXPECT_EQ(video->GetProperty(), VideoTree({SphericalNode(-2147483648LL, -1, 2147483647)}));
    EXPECT_EQ(video->GetSphericalInfo(), (SphericalInfo{Integers::min(), -1, Integers::max()}));
}

TEST(FormatCodecVideoTest, SetSphericalInfo_ReplacesTheWholeNodeInPlace) {
    const SP<IFormatCodecVideo> video =
        VideoWith({SphericalNode({Property("SPHERICAL_ROLL", "x"), Property("more", 1)}), Property("bitrate", 5)});
    video->SetSphericalInfo({1, 2, 3});
    EXPECT_EQ(video->GetProperty(), VideoTree({SphericalNode(1, 2, 3), Property("bitrate", 5)}));
}

TEST(FormatCodecVideoTest, GetSphericalInfo_KeepsTheLow32Bits) {
    const auto read = [](long long number) {
        return VideoWith({SphericalNode(number, number, number)})->GetSphericalInfo().pitch;
    };
    EXPECT_EQ(read(4294967301), 5);
    EXPECT_EQ(read(4294967295), -1);
    EXPECT_EQ(read(2147483648), Integers::min());
    EXPECT_EQ(read(-4294967297), -1);
    EXPECT_EQ(read(LongIntegers::min()), 0);
}

TEST(FormatCodecVideoTest, GetSphericalInfo_OfMissingOrWrongChildrenThrows) {
    const auto readNode = [](const Property& node) {
        const SP<IFormatCodecVideo> video = VideoWith({node});
        EXPECT_TRUE(video->SphericalInfoExist());
        video->GetSphericalInfo();
    };
    const auto read = [&](const Property& yaw, const Property& pitch, const Property& roll) {
        readNode(SphericalNode({yaw, pitch, roll}));
    };
    const Property yaw("SPHERICAL_YAW", 1);
    const Property pitch("SPHERICAL_PITCH", 2);
    const Property roll("SPHERICAL_ROLL", 3);
    const Property other("other", 4);
    ExpectMissing([] { NewVideo()->GetSphericalInfo(); }, "format_codec_video", "SPHERICAL_INFO");
    ExpectMissing([&] { readNode(Property("SPHERICAL_INFO", 5)); }, "SPHERICAL_INFO", "SPHERICAL_YAW",
                  PropertyTypes::Int64);
    ExpectMissing([&] { read(other, pitch, roll); }, "SPHERICAL_INFO", "SPHERICAL_YAW");
    ExpectMissing([&] { read(yaw, other, roll); }, "SPHERICAL_INFO", "SPHERICAL_PITCH");
    ExpectMissing([&] { read(yaw, pitch, other); }, "SPHERICAL_INFO", "SPHERICAL_ROLL");
    ExpectWrongType([&] { read(Property("SPHERICAL_YAW", "1"), pitch, roll); }, "SPHERICAL_YAW", PropertyTypes::String,
                    "GetInt64");
    ExpectWrongType([&] { read(yaw, Property("SPHERICAL_PITCH", true), roll); }, "SPHERICAL_PITCH", PropertyTypes::Bool,
                    "GetInt64");
    ExpectWrongType([&] { read(yaw, pitch, Property("SPHERICAL_ROLL", Ratio(3))); }, "SPHERICAL_ROLL",
                    PropertyTypes::Ratio, "GetInt64");
}

bool TwoPasses(const std::vector<Property>& children) { return VideoWith(children)->IsTwoPassEncodingEnabled(); }

bool TwoPasses(const char* passes, const char* mode) {
    return TwoPasses({Property("two_pass_encoding", passes), Property("bitrate_mode", mode)});
}

TEST(FormatCodecVideoTest, IsTwoPassEncodingEnabled_AtAConstantBitrateOnly) {
    EXPECT_TRUE(TwoPasses("two_pass", "CBR"));
    EXPECT_FALSE(TwoPasses("two_pass", "VBR"));
    EXPECT_FALSE(TwoPasses("two_pass", "CBR_AUTO"));
    EXPECT_FALSE(TwoPasses("two_pass", "cbr"));
    EXPECT_FALSE(TwoPasses("two_pass", ""));
}

TEST(FormatCodecVideoTest, IsTwoPassEncodingEnabled_WhenTwoPassesAreAskedForOnly) {
    EXPECT_FALSE(TwoPasses("one_pass", "CBR"));
    EXPECT_FALSE(TwoPasses("TWO_PASS", "CBR"));
    EXPECT_FALSE(TwoPasses("two_pass ", "CBR"));
    EXPECT_FALSE(TwoPasses("true", "CBR"));
    EXPECT_FALSE(TwoPasses("", "CBR"));
    EXPECT_FALSE(TwoPasses({Property("bitrate_mode", "CBR")}));
}

TEST(FormatCodecVideoTest, IsTwoPassEncodingEnabled_ReadsTheBitrateModeForTwoPassesOnly) {
    EXPECT_FALSE(TwoPasses({}));
    EXPECT_FALSE(TwoPasses({Property("two_pass_encoding", "one_pass")}));
    EXPECT_FALSE(TwoPasses({Property("two_pass_encoding", "one_pass"), Property("bitrate_mode", 1)}));
    ExpectMissing([] { TwoPasses({Property("two_pass_encoding", "two_pass")}); }, "format_codec_video", "bitrate_mode");
}

TEST(FormatCodecVideoTest, IsTwoPassEncodingEnabled_OfValuesThatAreNoTextsThrows) {
    const Property twoPass("two_pass_encoding", "two_pass");
    const Property constant("bitrate_mode", "CBR");
    ExpectWrongType(
        [&] {
            TwoPasses({Property("two_pass_encoding", true), constant});
        },
        "two_pass_encoding", PropertyTypes::Bool, "GetString");
    ExpectWrongType(
        [&] {
            TwoPasses({Property("two_pass_encoding"), constant});
        },
        "two_pass_encoding", PropertyTypes::Node, "GetString");
    ExpectWrongType(
        [&] {
            TwoPasses({twoPass, Property("bitrate_mode", 0)});
        },
        "bitrate_mode", PropertyTypes::Int64, "GetString");
}

TEST(FormatCodecVideoTest, IsGrid_WhenBothSizesExist) {
    const auto isGrid = [](const std::vector<Property>& children) { return VideoWith(children)->IsGrid(); };
    EXPECT_FALSE(isGrid({}));
    EXPECT_FALSE(isGrid({Property("heif_grid_width", 2)}));
    EXPECT_FALSE(isGrid({Property("heif_grid_height", 2)}));
    EXPECT_TRUE(isGrid({Property("heif_grid_width", 2), Property("heif_grid_height", 2)}));
    EXPECT_TRUE(isGrid({Property("heif_grid_height", 0), Property("heif_grid_width", "text")}));
    EXPECT_FALSE(isGrid({Tree("metadata", {Property("heif_grid_width", 2), Property("heif_grid_height", 2)})}));
}

bool Hardware(const Property& option) {
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetOptionsEncode(Tree("codec.options.encode", {Property("other", 1), option}));
    return video->IsHardwareContextEnabled();
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_UnlessSomethingSaysNo) {
    EXPECT_TRUE(NewVideo()->IsHardwareContextEnabled());
    EXPECT_TRUE(Hardware(Property("USE_HARDWARE_CONTEXT", false)));
    EXPECT_FALSE(Hardware(Property("use_hardware_context", false)));
    EXPECT_TRUE(Hardware(Property("use_hardware_context", true)));
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_TakesTheTextTrueOnly) {
    const auto hardware = [](const char* text) { return Hardware(Property("use_hardware_context", text)); };
    EXPECT_TRUE(hardware("true"));
    EXPECT_FALSE(hardware("false"));
    EXPECT_FALSE(hardware("TRUE"));
    EXPECT_FALSE(hardware("True"));
    EXPECT_FALSE(hardware("1"));
    EXPECT_FALSE(hardware("true "));
    EXPECT_FALSE(hardware(""));
    EXPECT_FALSE(Hardware(Property("use_hardware_context", std::string("true\0", 5))));
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_WhateverAnotherTypeSays) {
    EXPECT_TRUE(Hardware(Property("use_hardware_context", 0)));
    EXPECT_TRUE(Hardware(Property("use_hardware_context", 1)));
    EXPECT_TRUE(Hardware(Property("use_hardware_context", Ratio(0))));
    EXPECT_TRUE(Hardware(Property("use_hardware_context")));
    EXPECT_TRUE(Hardware(Nothing("use_hardware_context")));
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_LooksIntoTheEncoderOptionsOnly) {
    EXPECT_TRUE(VideoWith({Property("use_hardware_context", false)})->IsHardwareContextEnabled());
    EXPECT_TRUE(Hardware(Tree("deeper", {Property("use_hardware_context", false)})));
    const SP<IFormatCodecVideo> leaf = NewVideo();
    leaf->SetOptionsEncode(Property("codec.options.encode", "use_hardware_context"));
    EXPECT_TRUE(leaf->IsHardwareContextEnabled());
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_ReadsTheTreeAndNotTheVirtualFunction) {
    class Disguised : public IFormatCodecVideo {
    public:
        const Property& GetOptionsEncode() const override { return shown_; }
        const Property& GetProperty() const override { return shown_; }

    private:
        const Property shown_ = Testing::Tree("codec.options.encode", {Property("use_hardware_context", false)});
    };
    const SP<IFormatCodecVideo> video(new Disguised());
    EXPECT_TRUE(video->IsHardwareContextEnabled());
}

TEST(FormatCodecVideoTest, IsHardwareContextEnabled_WithoutEncoderOptionsThrows) {
    const SP<IFormatCodecVideo> video = NewVideo();
    Drop(*video, "codec.options.encode");
    ExpectMissing([&] { video->IsHardwareContextEnabled(); }, "format_codec_video", "codec.options.encode");
}

TEST(FormatCodecVideoTest, SetProperty_DoesNotRestoreWhatOnlyVideoHas) {
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetFrameRate(25, 1);
    video->SetProperty(Property("format_codec_video"));
    EXPECT_EQ(video->GetProperty(), Tree("format_codec_video", {Property("metadata"), Property("stream_metadata")}));
}

TEST(FormatCodecVideoTest, Setters_WorkOnAnUndefinedDescription) {
    const SP<IFormatCodecVideo> video = NewVideo();
    video->SetProperty(Property(""));
    video->SetFrameRate(25, 1);
    EXPECT_EQ(video->GetProperty(),
              Tree("", {Property("metadata"), Property("stream_metadata"), Property("frameRateRatio", Ratio(25)),
                        Property("stream_timebase", Ratio(1, 25))}));
    EXPECT_TRUE(video->IsUndefined());
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
