#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/TextIndex.h>

#include <cstddef>

namespace Quenzo::Detail {

namespace {

constexpr TextIndex<Column<kFormats, &FormatRow::id>> kFormatIndex;

}  // namespace

const FormatRow* FindFormat(std::string_view id) noexcept {
    const std::size_t place = kFormatIndex.Find(id);
    return place < kFormats.size() ? &kFormats[place] : nullptr;
}

}  // namespace Quenzo::Detail
