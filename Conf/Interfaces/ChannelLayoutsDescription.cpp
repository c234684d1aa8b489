#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/TableRows.h>
#include <Conf/Interfaces/TextIndex.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Quenzo::Conf {

namespace {

constexpr std::array<LayoutRecord, 29> kRows = std::to_array<LayoutRecord>({
#define QUENZO_LAYOUT(value, name, textId, channels) {ChannelLayout::name, channels, AudioVocabulary::textId},
#include <Conf/Interfaces/ChannelLayouts.def>
});

constexpr std::array<LayoutRecord, 28> kValidRows = Detail::WithoutFirst(kRows);

constexpr auto kTextIds = std::to_array<Detail::FixedText<17>>({
#define QUENZO_LAYOUT(value, name, textId, channels) Detail::AudioText::textId,
#include <Conf/Interfaces/ChannelLayouts.def>
});

constexpr auto kEnumerators = std::to_array<std::string_view>({
#define QUENZO_LAYOUT(value, name, textId, channels) #name,
#include <Conf/Interfaces/ChannelLayouts.def>
});

constexpr bool RowsStandAtTheirValues() {
    std::int32_t value = 0;
    return std::all_of(kRows.begin(), kRows.end(),
                       [&value](const LayoutRecord& row) { return row.layout == ChannelLayout{value++}; });
}

static_assert(RowsStandAtTheirValues());
static_assert(kRows.front().layout == ChannelLayout::UNKNOWN);
static_assert(Detail::AllDifferent(kTextIds));
static_assert(std::equal(kTextIds.begin(), kTextIds.end(), kEnumerators.begin(), kEnumerators.end(),
                         [](std::string_view textId, std::string_view enumerator) {
                             return textId == Detail::TextOfEnumerator(enumerator);
                         }),
              "an enumerator is named after its text id");

constexpr Detail::TextIndex<Detail::TextList<kTextIds>> kTextIndex;

}  // namespace

const std::array<LayoutRecord, 29>& LayoutRecord::Enumerate() noexcept { return kRows; }

const std::array<LayoutRecord, 28>& LayoutRecord::EnumerateValid() noexcept { return kValidRows; }

const LayoutRecord& LayoutRecord::Find(ChannelLayout layout) {
    // A negative value becomes a place far behind the last.
    return Detail::RowAt(kRows, static_cast<std::size_t>(layout), "Provided ChannelLayout is not found in list");
}

const LayoutRecord& LayoutRecord::Find(const std::string& textId) {
    return Detail::RowAt(kRows, kTextIndex.Find(textId), "Provided Channel TextID is not found in list");
}

const LayoutRecord& LayoutRecord::Find(int channels) {
    return Detail::FindRow(
        kRows, [channels](const LayoutRecord& row) { return row.channels == channels; },
        "Provided number of channels is not found in list");
}

std::uint32_t GetChannelLayoutLoss(ChannelLayout from, ChannelLayout to) {
    const std::int32_t channelsTo = LayoutRecord::Find(to).channels;
    const std::int32_t added = channelsTo - LayoutRecord::Find(from).channels;
    return static_cast<std::uint32_t>(added < 0 ? 100 - added : added);
}

ChannelLayout FindBestChannelLayout(ChannelLayout from, const std::vector<ChannelLayout>& candidates) {
    if (candidates.empty()) {
        return ChannelLayout::UNKNOWN;
    }
    ChannelLayout best = candidates.front();
    for (auto candidate = candidates.begin() + 1; candidate != candidates.end(); ++candidate) {
        if (GetChannelLayoutLoss(from, *candidate) < GetChannelLayoutLoss(from, best)) {
            best = *candidate;
        }
    }
    return best;
}

}  // namespace Quenzo::Conf
