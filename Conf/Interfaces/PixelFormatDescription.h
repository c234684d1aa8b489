#pragma once

#include <foundation/Export.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace Quenzo {

/// How the pixels of a video frame are stored, named after the formats' names; an underscore stands before a digit.
/// Descriptions hold the numbers, so they never change, and the gaps between them stay.
enum class PixFmt : std::int32_t {
    NONE = -1,  ///< no format
#define QUENZO_PIXEL_FORMAT(id, name, ...) name = (id),
#include <Conf/Interfaces/PixelFormats.def>
};

/// Which part of the numbers of a sample carries picture.
enum class PixelColorRange : std::int32_t {
    Unspecified = 0,  ///< RGB and palette formats
    Limited = 1,      ///< video range; in 8 bits luma from 16 to 235, chroma from 16 to 240
    Full = 2,         ///< all of it; in 8 bits from 0 to 255
};

/// Four bytes: red, green, blue and alpha of a colour, or one pixel of a format.
using PixColor = std::array<std::uint8_t, 4>;

/// What is known of one pixel format: what it takes to size the planes of a frame, and to fill it with one colour.
///
/// Sizes are in pixels, samples and bytes as told, without padding or alignment. They may be negative; then so are the
/// results, rounded upwards like all others. Products and sums beyond 64 bits give the nearest number that fits.
struct QUENZO_API PixFmtDescription {
    /// Bits of `flags`. Their values are part of the interface; 1 is never used, and PAL8 has no flag.
    enum Flag : int {
        Planar = 2,  ///< components have planes of their own; semi-planar formats too
        Rgb = 4,     ///< the components are red, green and blue
        Alpha = 8,   ///< one component more is alpha; a fourth sample that is not used (RGB0) is none
        Yuv = 16,    ///< the components are luma and two of chroma
        Float = 32,  ///< floating-point samples
        Gray = 64,   ///< luma is the only component
    };

    PixFmt id;                 ///< the number that descriptions hold
    std::string name;          ///< the text name, in capitals
    std::uint8_t components;   ///< number of colour components, alpha included
    std::uint8_t planes;       ///< number of planes in memory
    std::uint8_t log2ChromaW;  ///< planes 1 and 2 are narrower by this power of two
    std::uint8_t log2ChromaH;  ///< planes 1 and 2 are lower by this power of two
    std::uint8_t bits;         ///< significant bits of a component
    std::uint8_t shift;        ///< how far the significant bits are shifted up inside their storage word
    std::int32_t flags;        ///< sum of Flag values
    PixelColorRange range;     ///< which part of the numbers carries picture

    /// The fields, in their order.
    PixFmtDescription(PixFmt formatId, std::string_view formatName, std::uint8_t componentCount,
                      std::uint8_t planeCount, std::uint8_t chromaShiftW, std::uint8_t chromaShiftH,
                      std::uint8_t bitsPerComponent, std::uint8_t bitShift, int flagSet, PixelColorRange colorRange);

    /// What stands for "no format": id NONE, name "NONE", all numbers 0. Not among the supported formats.
    static const PixFmtDescription s_none;

    /// The supported formats. Their order is a promise.
    static const std::array<PixFmtDescription, 58> s_list;

    /// Their ids, in the same order.
    static const std::array<PixFmt, 58> s_supportedFormats;

    /// True for the formats of s_list. Names must match byte for byte.
    static bool IsSupported(PixFmt id) noexcept;
    static bool IsSupported(const std::string& name) noexcept;

    /// The description of a supported format, or s_none for NONE and "NONE". Raises std::logic_error for anything else;
    /// its text ends with the id in decimal or with the name.
    static const PixFmtDescription& Find(PixFmt id);
    static const PixFmtDescription& Find(const std::string& name);

    /// Pixels in a row of a plane, and rows of a plane, of a frame of the width or height given; the palette of PAL8 is
    /// 256 by 1. Raise std::invalid_argument, as do the two functions below, when the format has no such plane.
    std::int32_t GetPlanWidth(std::int32_t width, std::uint8_t plane) const;
    std::int32_t GetPlanHeight(std::int32_t height, std::uint8_t plane) const;

    /// Bytes in a row of a plane. The 5-6-5 formats count one byte for a pixel.
    std::int64_t GetPlanWidthSize(std::int32_t width, std::uint8_t plane) const;

    /// Bytes of a plane.
    std::int64_t GetPlanFullSize(std::int32_t width, std::int32_t height, std::uint8_t plane) const;

    /// Bytes of all planes; 0 when there are none.
    std::int64_t GetAllPlanesFullSize(std::int32_t width, std::int32_t height) const;

    /// One pixel of a colour given as red, green, blue and alpha from 0 to 255: its bytes in memory, or in planar
    /// formats the sample of each plane, and zeros after them. YUV formats are converted by ITU-R BT.601 into the
    /// format's range. PAL8 and BGR8, which have no such pixel, give zeros. Raises std::invalid_argument when a
    /// component has more than 8 bits.
    PixColor MakeColor(const PixColor& rgba) const;
};

}  // namespace Quenzo
