#pragma once

#include <foundation/Export.h>

#include <array>
#include <cstdint>
#include <string>

namespace Quenzo::Conf {

/// How audio samples are stored, named after the text ids: first the packed formats, which interleave the channels,
/// then their planar twins, which give each channel a plane of its own. SAMPLE_FMT_NONE, -1, means that no format is
/// set.
enum class SampleFormats : std::int32_t {
#define QUENZO_SAMPLE_FORMAT(value, name, bits, planar, isFloat, isSigned, twin) name = (value),
#include <Conf/Interfaces/SampleFormats.def>
};

/// What is known of one sample format: a row of a fixed table. Rows keep their addresses for the life of the process.
struct QUENZO_API SampleFmtRecord {
    SampleFormats format;  ///< the enumerator
    std::int32_t bits;     ///< bits per sample, 0 to 64
    std::string textId;    ///< the word that trees hold, the same as the enumerator's name
    bool planar;           ///< each channel has a plane of its own
    bool isFloat;          ///< floating-point samples
    bool isSigned;         ///< signed samples
    SampleFormats twin;    ///< the same samples in the other arrangement; SAMPLE_FMT_NONE is its own

    /// All rows: SAMPLE_FMT_NONE, then the others in the order of their values.
    static const std::array<SampleFmtRecord, 11>& Enumerate() noexcept;

    /// Copies of all rows but that of SAMPLE_FMT_NONE, in the same order.
    static const std::array<SampleFmtRecord, 10>& EnumerateValid() noexcept;

    /// The row of a format. Raises FormatException when the value is not one of the enumerators.
    static const SampleFmtRecord& Find(SampleFormats format);

    /// The row with a text id, which must match byte for byte. Raises FormatException when there is none.
    static const SampleFmtRecord& Find(const std::string& textId);

    /// The first row with a number of bits, never a planar one: 0 gives SAMPLE_FMT_NONE, 8 SAMPLE_FMT_U8, 16
    /// SAMPLE_FMT_S16, 32 SAMPLE_FMT_S32 and 64 SAMPLE_FMT_DBL. Raises FormatException for any other number.
    static const SampleFmtRecord& Find(int bits);

    /// The first row with a number of bits that is floating-point or not, never a planar one. Raises FormatException
    /// when there is none.
    static const SampleFmtRecord& Find(int bits, bool isFloat);

private:
    static const std::array<SampleFmtRecord, 11> s_rows;
    static const std::array<SampleFmtRecord, 10> s_validRows;
};

}  // namespace Quenzo::Conf
