#pragma once

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>
#include <foundation/Export.h>

#include <cstdint>

namespace Quenzo::Conf {

/// A sample rate with a sample format and a channel layout, any of which may be unset; all are unset at first.
struct QUENZO_API SampleInfo {
    /// How two bundles become one.
    enum class MergeStrategy : std::int32_t {
        Maximum = 0,    ///< the larger of each: rate, number of channels, number of bits; this object's among equals
        FillUnset = 1,  ///< the other's wherever this object has none
    };

    std::int32_t sampleRate = kUnsetRate;  ///< samples per second; -1 when unset
    const SampleFmtRecord* format =        ///< a row of the sample formats, never null; SAMPLE_FMT_NONE when unset
        &SampleFmtRecord::Find(SampleFormats::SAMPLE_FMT_NONE);
    const LayoutRecord* layout =  ///< a row of the channel layouts, never null; UNKNOWN when unset
        &LayoutRecord::Find(ChannelLayout::UNKNOWN);

    /// Sets all three. Raises FormatException when the format, or else the layout, is not one of the enumerators; then
    /// nothing is set.
    void Init(SampleFormats newFormat, int newSampleRate, ChannelLayout newLayout);

    /// Merges another bundle into this one and returns this one. Any other value of the strategy changes nothing.
    /// Raises FormatException, and changes nothing, when a row that Maximum compares stands for no layout.
    SampleInfo& MergeWith(const SampleInfo& other, MergeStrategy strategy);

    /// True when rate, format and layout are the same.
    friend bool operator==(const SampleInfo& left, const SampleInfo& right) noexcept {
        return left.sampleRate == right.sampleRate && left.format->format == right.format->format &&
               left.layout->layout == right.layout->layout;
    }

private:
    static constexpr std::int32_t kUnsetRate = -1;

    void FillUnsetFrom(const SampleInfo& other);
    void GrowTo(const SampleInfo& other);
};

}  // namespace Quenzo::Conf
