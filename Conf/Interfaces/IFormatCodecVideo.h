#pragma once

#include <Conf/Interfaces/ColorCharacteristic.h>
#include <Conf/Interfaces/DisplayMatrix.h>
#include <Conf/Interfaces/FrameInfo.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <boost/rational.hpp>

#include <cstdint>

namespace Quenzo::Conf {

/// Where a viewer of a 360-degree video looks at first. The numbers are kept as they are given; this library gives them
/// no unit.
struct SphericalInfo {
    std::int32_t yaw = 0;    ///< the turn to the side
    std::int32_t pitch = 0;  ///< the turn up or down
    std::int32_t roll = 0;   ///< the tilt

    bool operator==(const SphericalInfo& other) const = default;
};

/// The description of a video stream or a still image: typed accessors over the tree, whose root is named
/// TAG_FORMAT_CODEC_VIDEO. A new one has the children of every stream and TAG_COVER_FLAG, false.
///
/// A getter that names no default raises PropertyException when its key is missing or holds another type. Numbers are
/// kept as 64-bit integers; a getter of 32 bits returns the low ones.
class QUENZO_API IFormatCodecVideo : public IFormatCodec, public VideoVocabulary {
public:
    IFormatCodecVideo& operator=(const IFormatCodecVideo& other) = delete;

    /// A description with the children of every stream and TAG_COVER_FLAG, false.
    static SP<IFormatCodecVideo> Create();

    /// An independent tree, the same attachments, references counted anew.
    SP<IFormatCodecVideo> Clone() const;
    SP<IFormatCodec> CloneBase() const override;

    MediaType GetCodecType() const override;

    /// The size in pixels and the pixel aspect.
    FrameInfo GetFrameInfo() const;

    /// Store the size in pixels and the pixel aspect: as it is given, or computed from the frame (display) aspect and
    /// reduced.
    void InitByPixelAspect(unsigned width, unsigned height, unsigned pixelAspectX, unsigned pixelAspectY);
    void InitByFrameAspect(unsigned width, unsigned height, unsigned frameAspectX, unsigned frameAspectY);

    /// Turn a frame aspect into the pixel aspect of a frame of that size, and back: 720x576 at 16:9 has pixels of
    /// 64:45. The results are in lowest terms; 0:0 stays 0:0. The products on the way are of 32 bits and wrap around,
    /// which is kept on purpose.
    static void FrameToPixelAspect(unsigned width, unsigned height, unsigned frameAspectX, unsigned frameAspectY,
                                   unsigned& pixelAspectX, unsigned& pixelAspectY);
    static void PixelToFrameAspect(unsigned width, unsigned height, unsigned pixelAspectX, unsigned pixelAspectY,
                                   unsigned& frameAspectX, unsigned& frameAspectY);

    /// The frame aspect of the stored geometry, in lowest terms, and as a quotient (infinite, or NaN, when Y is 0).
    unsigned GetFrameAspectX() const;
    unsigned GetFrameAspectY() const;
    double GetFrameAspect() const;

    /// Stores frames per second, and as the time base its reciprocal, or 0/1 when the rate is not positive. Raises
    /// boost::bad_rational, and stores nothing, when the denominator is 0.
    void SetFrameRate(const boost::rational<long long>& fps);
    void SetFrameRate(unsigned num, unsigned den);

    /// The colour characteristics; each is UNSPECIFIED when it is missing.
    ColorPrimaries GetColorPrimaries() const;
    TransferFunction GetColorTransferFunction() const;
    YCbCrMatrix GetColorYCbCrMatrix() const;
    ColorSpace GetColorSpace() const;

    /// Stores all three when all are valid (IsValidColorPrimaries and its siblings), and else removes those that are
    /// stored.
    void SetColorSpace(const ColorSpace& colorSpace);

    /// The pixel format; NONE when it is missing. Setting NONE removes it. Not checked against the supported formats.
    PixFmt GetPixelFormat() const;
    void SetPixelFormat(PixFmt format);

    /// The display matrix, stored as nine integers joined by colons. The default matrix is returned when it is missing
    /// or cannot be read. Setting a matrix that counts as default (DisplayMatrix::IsDefault: the translation does not
    /// matter) removes it.
    bool ExistsDisplayMatrix() const;
    DisplayMatrix GetDisplayMatrix() const;
    void SetDisplayMatrix(const DisplayMatrix& matrix);

    /// Where a viewer looks at first: the integers SPHERICAL_YAW, SPHERICAL_PITCH and SPHERICAL_ROLL in a node named
    /// SPHERICAL_INFO. Reading it raises PropertyException when one of them is not there.
    bool SphericalInfoExist() const;
    SphericalInfo GetSphericalInfo() const;
    void SetSphericalInfo(const SphericalInfo& info);

    /// True when two passes are asked for and the bitrate is constant: other modes have no use for a second pass.
    /// Raises PropertyException when two passes are asked for and there is no bitrate mode.
    bool IsTwoPassEncodingEnabled() const;

    /// True for an image made of tiles: both sizes of its grid are stored.
    bool IsGrid() const;

    /// What TAG_USE_HW_CONTEXT in the encoder options says: a boolean, or the string "true" (any other string counts as
    /// no). True when it is missing or of another type: hardware is used unless it is switched off.
    bool IsHardwareContextEnabled() const;

protected:
    IFormatCodecVideo();
    IFormatCodecVideo(const IFormatCodecVideo& other) = default;
    ~IFormatCodecVideo() override;
};

}  // namespace Quenzo::Conf
