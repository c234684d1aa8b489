#pragma once

#include <foundation/Export.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <cstdint>
#include <string>
#include <string_view>

/// Proposals for the bit rate of a video stream, and the bounds of a stream's bit rate. All bit rates are in bits per
/// second.
///
/// The model is an empirical power law for each family of codecs: a frame of w × h pixels takes multiplier ×
/// √(w × h) ^ exponent kilobits (of 1024 bits) per second at 25 to 30 frames per second. It is computed in double, and
/// every conversion to an integer drops the fraction; what does not fit gives the nearest integer that does, and NaN
/// gives 0. No size or frame rate is refused.
///
/// A quality is a number from IFormatCodec::MIN_QUALITY, 1 and the best, to IFormatCodec::MAX_QUALITY, 32 and the
/// lowest.
///
/// Where a description's tree lacks a key or holds another type under it, PropertyException is raised. All functions
/// may be called from any thread.
namespace Quenzo::Conf {

class IFormatCodec;

/// Which end of a stream's bit rate.
enum class Boundary : int {
    Min = 0,
    Max = 1,
};

/// The numbers of a codec family in the power law.
struct VideoBitrateModel {
    std::string_view codecId;  ///< the codec that the numbers are for
    double exponent;           ///< of the root of the frame's area, √(w × h)
    double multiplier;         ///< of that power, which gives kilobits (of 1024 bits) per second
    double share;              ///< a newer codec's part of the bit rate that the law gives for an older one, or 1
};

/// The numbers for a codec: its own, or those of H.264 for a codec that has none and for any other text. Valid until
/// the library is unloaded.
QUENZO_API const VideoBitrateModel& GetVideoBitrateModel(std::string_view codecId) noexcept;

/// By what the bit rate for 25 to 30 frames per second is multiplied for another frame rate: 1.1 at 50, 0.3 at 0.
QUENZO_API double GetFrameRateFactor(double fps) noexcept;

/// Turns kilobits (of 1024 bits) per second that suit 25 to 30 frames per second into bits per second for `fps` frames
/// per second.
QUENZO_API std::int64_t CorrectBitrateByFPS(double kbps, double fps);

/// The power law: bits per second for a frame of that size in pixels and `fps` frames per second. `coeffs` points at
/// two numbers, the exponent and the multiplier of a VideoBitrateModel.
QUENZO_API std::int64_t CalculateBitrate(double width, double height, double fps, const double* coeffs);

/// Scales a bit rate by a quality: 1 keeps it, 32 leaves a third, linear between. The quality is not checked.
QUENZO_API std::int64_t NormBitrate(long long bitrate, int quality);

/// The usual bit rate of a codec for a frame of that size in pixels, whatever the quality. A codec without numbers of
/// its own, and any other text, counts as H.264.
QUENZO_API std::int64_t GetDefVideoBitrate(const std::string& codecId, long long width, long long height, double fps);

/// The usual, the lowest (half of it) and the highest (twice) bit rate, scaled by the quality when it is in its range
/// and as they are when it is not.
QUENZO_API std::int64_t GetDefaultVideoBitrate(const std::string& codecId, long long width, long long height,
                                               double fps, int quality);
QUENZO_API std::int64_t GetMinVideoBitrate(const std::string& codecId, long long width, long long height, double fps,
                                           int quality);
QUENZO_API std::int64_t GetMaxVideoBitrate(const std::string& codecId, long long width, long long height, double fps,
                                           int quality);

/// The same for a video description, from its TAG_BITRATE_MODE, TAG_CODEC_ID, TAG_WIDTH, TAG_HEIGHT (the low 32 bits of
/// each), TAG_FPS and, in mode VBR only, TAG_QUALITY. Raise ConfException for any other description and for null.
QUENZO_API std::int64_t GetDefaultVideoBitrate(const SP<const IFormatCodec>& codec);
QUENZO_API std::int64_t GetMinVideoBitrate(const SP<const IFormatCodec>& codec);
QUENZO_API std::int64_t GetMaxVideoBitrate(const SP<const IFormatCodec>& codec);

/// The lowest and the highest bit rate that a described stream may take, from the TAG_BITRATE of its tree. In mode CBR
/// both are that bit rate. In mode VBR, video may take half to twice of it, scaled by the quality when that is in its
/// range; FLAC and ALAC four to six fifths; other audio just that bit rate. Raise std::invalid_argument for any other
/// mode, CBR_AUTO too, and in mode VBR for a tree that is neither an audio nor a video description, by the name of its
/// root.
QUENZO_API std::int64_t GetBitrateBounded(const Core::Property& codec, Boundary boundary);
QUENZO_API std::int64_t GetMinBitrate(const Core::Property& codec);
QUENZO_API std::int64_t GetMaxBitrate(const Core::Property& codec);

}  // namespace Quenzo::Conf
