#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/TextIndex.h>

#include <cstddef>

namespace Quenzo::Detail {

namespace {

constexpr TextIndex kFormatIndex(TextsOf(kFormats, &FormatRow::id));

}  // namespace

const FormatRow* FindFormat(std::string_view id) noexcept {
    const std::size_t place = kFormatIndex.Find(id);
    return place < kFormats.size() ? &kFormats[place] : nullptr;
}

}  // namespace Quenzo::Detail
