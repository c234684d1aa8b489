#include <Conf/Interfaces/CodecTable.h>
#include <Conf/Interfaces/TextIndex.h>

#include <cstddef>

namespace Quenzo::Detail {

namespace {

constexpr TextIndex<Column<kCodecs, &CodecRow::id>> kCodecIndex;

}  // namespace

const CodecRow* FindCodec(std::string_view id) noexcept {
    const std::size_t place = kCodecIndex.Find(id);
    return place < kCodecs.size() ? &kCodecs[place] : nullptr;
}

}  // namespace Quenzo::Detail
