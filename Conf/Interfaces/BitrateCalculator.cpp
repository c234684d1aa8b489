#include <Conf/Interfaces/BitrateCalculator.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/TextIndex.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>
#include <foundation/Number.h>
#include <foundation/Throw.h>

#include <boost/rational.hpp>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace Quenzo::Conf {

namespace {

using Detail::VideoText;

// The exponent and the multiplier of a family.
struct Coefficients {
    double exponent;
    double multiplier;
};

constexpr Coefficients kH264 = {1.77159772378506, 0.02258715704279473};
constexpr Coefficients kMpeg4 = {1.68161903598991, 0.039488084819935404};
constexpr Coefficients kMpeg2 = {1.1524191046175, 4.788692545981473};
constexpr Coefficients kMjpeg = {1.50756587151362, 0.2715574111367215};
constexpr Coefficients kWmv2 = {1.3067181463997, 0.9020295949258734};
constexpr Coefficients kH263 = {1.13639167694174, 2.0705909478945586};
constexpr Coefficients kGif = {1.7147259693685, 0.4569878257741088};

constexpr VideoBitrateModel Model(std::string_view codecId, const Coefficients& coefficients, double share = 1) {
    return {codecId, coefficients.exponent, coefficients.multiplier, share};
}

constexpr auto kModels = std::to_array<VideoBitrateModel>({
    Model(VideoText::CODEC_ID_H264, kH264),
    Model(VideoText::CODEC_ID_THEORA, kH264),
    Model(VideoText::CODEC_ID_VP8, kH264),
    Model(VideoText::CODEC_ID_MPEG4, kMpeg4),
    Model(VideoText::CODEC_ID_MPEG1VIDEO, kMpeg2),
    Model(VideoText::CODEC_ID_MPEG2VIDEO, kMpeg2),
    Model(VideoText::CODEC_ID_MJPEG, kMjpeg),
    Model(VideoText::CODEC_ID_WMV2, kWmv2),
    Model(VideoText::CODEC_ID_H263, kH263),
    Model(VideoText::CODEC_ID_GIF, kGif),
    Model(VideoText::CODEC_ID_H265, kH264, 0.7),
    Model(VideoText::CODEC_ID_VP9, kH264, 0.7),
    Model(VideoText::CODEC_ID_AV1, kH264, 0.55),
});

static_assert(kModels.front().codecId == VideoText::CODEC_ID_H264, "the first serves the codecs without numbers");

constexpr Detail::TextIndex<Detail::Column<kModels, &VideoBitrateModel::codecId>> kModelIndex;

std::int64_t Truncate(double value) { return SaturatingTruncate<std::int64_t>(value); }

std::int64_t TwiceOf(std::int64_t bitrate) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (bitrate > Limits::max() / 2) {
        return Limits::max();
    }
    return bitrate < Limits::min() / 2 ? Limits::min() : 2 * bitrate;
}

std::int64_t ScaledByQuality(std::int64_t bitrate, int quality) {
    const bool inRange = quality >= IFormatCodec::MIN_QUALITY && quality <= IFormatCodec::MAX_QUALITY;
    return inRange ? NormBitrate(bitrate, quality) : bitrate;
}

enum class Proposal { Default, Min, Max };

std::int64_t Propose(Proposal proposal, std::int64_t bitrate) {
    switch (proposal) {
        case Proposal::Default: return bitrate;
        case Proposal::Min: return bitrate / 2;
        case Proposal::Max: return TwiceOf(bitrate);
    }
    return bitrate;
}

std::int64_t ProposeFor(Proposal proposal, const std::string& codecId, long long width, long long height, double fps,
                        int quality) {
    return ScaledByQuality(Propose(proposal, GetDefVideoBitrate(codecId, width, height, fps)), quality);
}

int QualityOf(const Core::Property& tree) { return static_cast<int>(tree[IFormatCodec::TAG_QUALITY].GetInt64()); }

// Arithmetic that overflows can give a rational a denominator that no assignment would.
double ToDouble(const boost::rational<long long>& rate) {
    if (rate.denominator() < 1) {
        return 0;
    }
    return static_cast<double>(rate.numerator()) / static_cast<double>(rate.denominator());
}

std::int64_t ProposeFor(Proposal proposal, const SP<const IFormatCodec>& codec) {
    const SP<const IFormatCodecVideo> video = boost::dynamic_pointer_cast<const IFormatCodecVideo>(codec);
    if (video == nullptr) {
        QUENZO_THROW(ConfException() << Exception::TagDescription("Incompatible type of IFormatCodec structure"));
    }
    const Core::Property& tree = video->GetProperty();
    const std::string& mode = tree[IFormatCodec::TAG_BITRATE_MODE].GetString();
    const std::string& codecId = tree[IFormatCodec::TAG_CODEC_ID].GetString();
    const auto width = static_cast<std::uint32_t>(tree[IFormatCodecVideo::TAG_WIDTH].GetInt64());
    const auto height = static_cast<std::uint32_t>(tree[IFormatCodecVideo::TAG_HEIGHT].GetInt64());
    const double fps = ToDouble(tree[IFormatCodecVideo::TAG_FPS].GetRatio());
    const std::int64_t bitrate = Propose(proposal, GetDefVideoBitrate(codecId, width, height, fps));
    return mode == IFormatCodec::TAG_BITRATE_MODE_VBR ? ScaledByQuality(bitrate, QualityOf(tree)) : bitrate;
}

std::int64_t BoundOfAudio(const Core::Property& codec, std::int64_t bitrate, Boundary boundary) {
    const std::string& codecId = codec[IFormatCodec::TAG_CODEC_ID].GetString();
    if (codecId != IFormatCodecAudio::CODEC_ID_ALAC && codecId != IFormatCodecAudio::CODEC_ID_FLAC) {
        return bitrate;
    }
    return Truncate((boundary == Boundary::Min ? 0.8 : 1.2) * static_cast<double>(bitrate));
}

std::int64_t BoundOfVideo(const Core::Property& codec, std::int64_t bitrate, Boundary boundary) {
    const int quality = QualityOf(codec);
    return ScaledByQuality(Truncate((boundary == Boundary::Min ? 0.5 : 2.0) * static_cast<double>(bitrate)), quality);
}

}  // namespace

const VideoBitrateModel& GetVideoBitrateModel(std::string_view codecId) noexcept {
    const std::size_t place = kModelIndex.Find(codecId);
    return place < kModels.size() ? kModels[place] : kModels.front();
}

double GetFrameRateFactor(double fps) noexcept {
    if (fps > 30) {
        return ((fps - 30) * 0.1) / 20 + 1.0;
    }
    return fps < 25 ? ((fps * 0.7) / 25) + 0.3 : 1;
}

// Multiplying by 1, between 25 and 30 frames per second, changes nothing; nor does multiplying by 1024 round anything.
std::int64_t CorrectBitrateByFPS(double kbps, double fps) { return Truncate(GetFrameRateFactor(fps) * kbps * 1024); }

std::int64_t CalculateBitrate(double width, double height, double fps, const double* coeffs) {
    return CorrectBitrateByFPS(coeffs[1] * std::pow(std::sqrt(width * height), coeffs[0]), fps);
}

std::int64_t NormBitrate(long long bitrate, int quality) {
    constexpr double change = -0.6666666666666666;
    constexpr auto range = static_cast<double>(IFormatCodec::MAX_QUALITY - IFormatCodec::MIN_QUALITY);
    const auto steps = static_cast<double>(quality - IFormatCodec::MIN_QUALITY);
    return Truncate((1.0 + steps * change / range) * static_cast<double>(bitrate));
}

std::int64_t GetDefVideoBitrate(const std::string& codecId, long long width, long long height, double fps) {
    const VideoBitrateModel& model = GetVideoBitrateModel(codecId);
    const std::array<double, 2> coefficients = {model.exponent, model.multiplier};
    const std::int64_t bitrate =
        CalculateBitrate(static_cast<double>(width), static_cast<double>(height), fps, coefficients.data());
    return model.share == 1 ? bitrate : Truncate(static_cast<double>(bitrate) * model.share);
}

std::int64_t GetDefaultVideoBitrate(const std::string& codecId, long long width, long long height, double fps,
                                    int quality) {
    return ProposeFor(Proposal::Default, codecId, width, height, fps, quality);
}

std::int64_t GetMinVideoBitrate(const std::string& codecId, long long width, long long height, double fps,
                                int quality) {
    return ProposeFor(Proposal::Min, codecId, width, height, fps, quality);
}

std::int64_t GetMaxVideoBitrate(const std::string& codecId, long long width, long long height, double fps,
                                int quality) {
    return ProposeFor(Proposal::Max, codecId, width, height, fps, quality);
}

std::int64_t GetDefaultVideoBitrate(const SP<const IFormatCodec>& codec) {
    return ProposeFor(Proposal::Default, codec);
}

std::int64_t GetMinVideoBitrate(const SP<const IFormatCodec>& codec) { return ProposeFor(Proposal::Min, codec); }

std::int64_t GetMaxVideoBitrate(const SP<const IFormatCodec>& codec) { return ProposeFor(Proposal::Max, codec); }

std::int64_t GetBitrateBounded(const Core::Property& codec, Boundary boundary) {
    const std::int64_t bitrate = codec[IFormatCodec::TAG_BITRATE].GetInt64();
    const std::string& mode = codec[IFormatCodec::TAG_BITRATE_MODE].GetString();
    if (mode == IFormatCodec::TAG_BITRATE_MODE_CBR) {
        return bitrate;
    }
    if (mode != IFormatCodec::TAG_BITRATE_MODE_VBR) {
        QUENZO_THROW(std::invalid_argument("Unexpected bitrate mode: " + mode));
    }
    if (codec.GetName() == IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO) {
        return BoundOfAudio(codec, bitrate, boundary);
    }
    if (codec.GetName() == IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO) {
        return BoundOfVideo(codec, bitrate, boundary);
    }
    QUENZO_THROW(std::invalid_argument("Unsupported codec format for bitrate calculation"));
}

std::int64_t GetMinBitrate(const Core::Property& codec) { return GetBitrateBounded(codec, Boundary::Min); }

std::int64_t GetMaxBitrate(const Core::Property& codec) { return GetBitrateBounded(codec, Boundary::Max); }

}  // namespace Quenzo::Conf
