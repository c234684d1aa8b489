#include <Conf/Interfaces/CodecTable.h>

#include <algorithm>
#include <cstddef>

namespace Quenzo::Detail {

namespace {

constexpr std::array<std::string_view, kCodecs.size()> CodecIds() {
    std::array<std::string_view, kCodecs.size()> ids;
    std::transform(kCodecs.begin(), kCodecs.end(), ids.begin(), [](const CodecRow& row) { return row.id; });
    return ids;
}

constexpr TextIndex kCodecIndex(CodecIds());

}  // namespace

const CodecRow* FindCodec(std::string_view id) noexcept {
    const std::size_t place = kCodecIndex.Find(id);
    return place < kCodecs.size() ? &kCodecs[place] : nullptr;
}

}  // namespace Quenzo::Detail
