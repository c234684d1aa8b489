#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/TextIndex.h>

#include <algorithm>
#include <cstddef>

namespace Quenzo::Detail {

namespace {

constexpr std::array<std::string_view, kFormats.size()> FormatIds() {
    std::array<std::string_view, kFormats.size()> ids;
    std::transform(kFormats.begin(), kFormats.end(), ids.begin(), [](const FormatRow& row) { return row.id; });
    return ids;
}

constexpr TextIndex kFormatIndex(FormatIds());

}  // namespace

const FormatRow* FindFormat(std::string_view id) noexcept {
    const std::size_t place = kFormatIndex.Find(id);
    return place < kFormats.size() ? &kFormats[place] : nullptr;
}

}  // namespace Quenzo::Detail
