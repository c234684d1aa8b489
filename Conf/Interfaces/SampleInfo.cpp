#include <Conf/Interfaces/SampleInfo.h>

#include <algorithm>

namespace Quenzo::Conf {

void SampleInfo::Init(SampleFormats newFormat, int newSampleRate, ChannelLayout newLayout) {
    const SampleFmtRecord& formatRow = SampleFmtRecord::Find(newFormat);
    const LayoutRecord& layoutRow = LayoutRecord::Find(newLayout);
    sampleRate = newSampleRate;
    format = &formatRow;
    layout = &layoutRow;
}

SampleInfo& SampleInfo::MergeWith(const SampleInfo& other, MergeStrategy strategy) {
    switch (strategy) {
        case MergeStrategy::Maximum: GrowTo(other); break;
        case MergeStrategy::FillUnset: FillUnsetFrom(other); break;
    }
    return *this;
}

void SampleInfo::FillUnsetFrom(const SampleInfo& other) {
    if (format->format == SampleFormats::SAMPLE_FMT_NONE) {
        format = other.format;
    }
    if (layout->layout == ChannelLayout::UNKNOWN) {
        layout = other.layout;
    }
    if (sampleRate == kUnsetRate) {
        sampleRate = other.sampleRate;
    }
}

void SampleInfo::GrowTo(const SampleInfo& other) {
    // The pointers are open to everybody: the table, not the row pointed to, says how many channels a layout has, and
    // raises when it has no such row.
    const bool hasMoreChannels =
        LayoutRecord::Find(other.layout->layout).channels > LayoutRecord::Find(layout->layout).channels;
    sampleRate = std::max(sampleRate, other.sampleRate);
    if (hasMoreChannels) {
        layout = other.layout;
    }
    if (other.format->bits > format->bits) {
        format = other.format;
    }
}

}  // namespace Quenzo::Conf
