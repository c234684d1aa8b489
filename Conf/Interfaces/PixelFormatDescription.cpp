#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/TableRows.h>
#include <Conf/Interfaces/TextIndex.h>
#include <foundation/Throw.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <stdexcept>

namespace Quenzo {

namespace {

constexpr auto kIds = std::to_array<PixFmt>({
#define QUENZO_PIXEL_FORMAT(id, name, ...) PixFmt::name,
#include <Conf/Interfaces/PixelFormats.def>
});

constexpr auto kNames = std::to_array<Detail::FixedText<11>>({
#define QUENZO_PIXEL_FORMAT(id, name, ...) Detail::TextOfEnumerator(#name),
#include <Conf/Interfaces/PixelFormats.def>
});

static_assert(Detail::AllDifferent(kIds));
static_assert(Detail::AllDifferent(kNames));
static_assert(*std::min_element(kIds.begin(), kIds.end()) > PixFmt::NONE);

constexpr Detail::TextIndex<Detail::TextList<kNames>> kNameIndex;

// The place of each id in the list, or the size of the list where an id is not in use.
constexpr auto kPlaces = []() {
    constexpr auto largest = static_cast<std::size_t>(*std::max_element(kIds.begin(), kIds.end()));
    std::array<std::uint8_t, largest + 1> places = {};
    places.fill(kIds.size());
    for (std::size_t place = 0; place < kIds.size(); ++place) {
        places[static_cast<std::size_t>(kIds[place])] = static_cast<std::uint8_t>(place);
    }
    return places;
}();

constexpr std::size_t PlaceOf(PixFmt id) {
    // A negative id becomes one far behind the last.
    const auto index = static_cast<std::size_t>(id);
    return index < kPlaces.size() ? kPlaces[index] : kIds.size();
}

enum class Packing : std::uint8_t { OneSample, ThreeSamples, FourSamples, FourFloats, SemiPlanar, Palette };

// The bytes that the pixel of a solid colour is made of, by their letters in the rows, and the blank for a zero.
constexpr std::string_view kColorBytes = " RGBAYUVHL";

// Bytes of a pixel: with samples of one byte in any plane but 1, and in plane 1; then the same with larger samples.
using PixelBytes = std::array<std::uint8_t, 4>;

constexpr PixelBytes BytesOf(Packing packing) {
    switch (packing) {
        case Packing::OneSample: break;
        case Packing::ThreeSamples: return {3, 3, 6, 6};
        case Packing::FourSamples: return {4, 4, 8, 8};
        case Packing::FourFloats: return {16, 16, 16, 16};
        case Packing::SemiPlanar: return {1, 2, 2, 4};
        case Packing::Palette: return {1, 4, 2, 8};
    }
    return {1, 1, 2, 2};
}

struct PixelMemory {
    PixelBytes bytes = BytesOf(Packing::OneSample);
    std::array<std::uint8_t, 4> color = {};  // indices into kColorBytes
};

constexpr PixelMemory MakePixelMemory(Packing packing, std::string_view colorBytes) {
    PixelMemory memory = {BytesOf(packing), {}};
    std::transform(colorBytes.begin(), colorBytes.end(), memory.color.begin(),
                   [](char letter) { return static_cast<std::uint8_t>(kColorBytes.find(letter)); });
    return memory;
}

constexpr auto kMemory = std::to_array<PixelMemory>({
#define QUENZO_PIXEL_FORMAT(id, name, components, planes, log2ChromaW, log2ChromaH, bits, shift, flags, range, \
                            packing, color)                                                                    \
    MakePixelMemory(Packing::packing, color),
#include <Conf/Interfaces/PixelFormats.def>
});

static_assert(std::all_of(kMemory.begin(), kMemory.end(),
                          [](const PixelMemory& memory) {
                              return std::all_of(memory.color.begin(), memory.color.end(),
                                                 [](std::uint8_t index) { return index < kColorBytes.size(); });
                          }),
              "a row mentions a letter that stands for no byte");

// The same by id. Anybody may make a description of an unlisted id; its planes hold one sample for a pixel, as the last
// row says.
constexpr auto kMemoryOfIds = []() {
    std::array<PixelMemory, kPlaces.size() + 1> memory = {};
    for (std::size_t place = 0; place < kIds.size(); ++place) {
        memory[static_cast<std::size_t>(kIds[place])] = kMemory[place];
    }
    return memory;
}();

const PixelMemory& MemoryOf(PixFmt id) {
    return kMemoryOfIds[std::min(static_cast<std::size_t>(id), kMemoryOfIds.size() - 1)];
}

// A size divided by a power of two and rounded up.
std::int32_t Subsampled(std::int32_t size, std::uint8_t log2) {
    // In 64 bits the negation of every size fits, and from 32 on every shift gives the same.
    return static_cast<std::int32_t>(-(-std::int64_t{size} >> std::min<unsigned>(log2, 32)));
}

// On its own, so that the functions below stay small enough to be put in place.
[[noreturn]] void ThrowNoSuchPlane() { QUENZO_THROW(std::invalid_argument("Unexpected plane")); }

// The width or the height of a plane, from that of the frame.
std::int32_t PlaneSide(const PixFmtDescription& format, std::uint8_t plane, std::int32_t side, std::uint8_t log2Chroma,
                       std::int32_t paletteSide) {
    if (plane >= format.planes) {
        ThrowNoSuchPlane();
    }
    if (plane == 1 && format.id == PixFmt::PAL8) [[unlikely]] {
        return paletteSide;
    }
    return plane == 1 || plane == 2 ? Subsampled(side, log2Chroma) : side;
}

std::int64_t SaturatingProduct(std::int64_t left, std::int64_t right) {
    std::int64_t product = 0;
    if (!__builtin_mul_overflow(left, right, &product)) {
        return product;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    return (left < 0) == (right < 0) ? Limits::max() : Limits::min();
}

std::int64_t SaturatingSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(left, right, &sum)) {
        return sum;
    }
    using Limits = std::numeric_limits<std::int64_t>;
    return left < 0 ? Limits::min() : Limits::max();
}

struct Yuv8 {
    std::uint8_t y, u, v;
};

// ITU-R BT.601 in 8 bits, luma from 16 to 235 and chroma from 16 to 240. Coefficients are in 1024ths; 16896 is 16.5 and
// 511 just under one half, which leaves the chroma of greys at 128.
Yuv8 ToLimitedRange(int red, int green, int blue) {
    return {static_cast<std::uint8_t>((263 * red + 516 * green + 100 * blue + 16896) >> 10),
            static_cast<std::uint8_t>(((-152 * red - 298 * green + 450 * blue + 511) >> 10) + 128),
            static_cast<std::uint8_t>(((450 * red - 377 * green - 73 * blue + 511) >> 10) + 128)};
}

// Stretches luma to 0 to 255 (by 255/219) and chroma to 1 to 255 (by 255/225), again in 1024ths.
Yuv8 ToFullRange(const Yuv8& limited) {
    const auto stretchChroma = [](int chroma) { return static_cast<std::uint8_t>((chroma * 1161 - 17024) >> 10); };
    return {static_cast<std::uint8_t>(((limited.y - 16) * 1192 + 512) >> 10), stretchChroma(limited.u),
            stretchChroma(limited.v)};
}

}  // namespace

constinit const std::array<PixFmt, 58> PixFmtDescription::s_supportedFormats = kIds;

PixFmtDescription::PixFmtDescription(PixFmt formatId, std::string_view formatName, std::uint8_t componentCount,
                                     std::uint8_t planeCount, std::uint8_t chromaShiftW, std::uint8_t chromaShiftH,
                                     std::uint8_t bitsPerComponent, std::uint8_t bitShift, int flagSet,
                                     PixelColorRange colorRange)
    : id(formatId),
      name(formatName),
      components(componentCount),
      planes(planeCount),
      log2ChromaW(chromaShiftW),
      log2ChromaH(chromaShiftH),
      bits(bitsPerComponent),
      shift(bitShift),
      flags(flagSet),
      range(colorRange) {}

bool PixFmtDescription::IsSupported(PixFmt id) noexcept { return PlaceOf(id) < kIds.size(); }

bool PixFmtDescription::IsSupported(const std::string& name) noexcept { return kNameIndex.Find(name) < kNames.size(); }

const PixFmtDescription& PixFmtDescription::Find(PixFmt id) {
    const std::size_t place = PlaceOf(id);
    if (place < s_list.size()) {
        return s_list[place];
    }
    if (id == s_none.id) {
        return s_none;
    }
    QUENZO_THROW(std::logic_error("Unknown pixel format id: " + std::to_string(static_cast<std::int32_t>(id))));
}

const PixFmtDescription& PixFmtDescription::Find(const std::string& name) {
    const std::size_t place = kNameIndex.Find(name);
    if (place < s_list.size()) {
        return s_list[place];
    }
    if (name == s_none.name) {
        return s_none;
    }
    QUENZO_THROW(std::logic_error("Unknown pixel format name: " + name));
}

std::int32_t PixFmtDescription::GetPlanWidth(std::int32_t width, std::uint8_t plane) const {
    return PlaneSide(*this, plane, width, log2ChromaW, 256);
}

std::int32_t PixFmtDescription::GetPlanHeight(std::int32_t height, std::uint8_t plane) const {
    return PlaneSide(*this, plane, height, log2ChromaH, 1);
}

std::int64_t PixFmtDescription::GetPlanWidthSize(std::int32_t width, std::uint8_t plane) const {
    const std::int64_t pixels = GetPlanWidth(width, plane);
    const std::size_t large = bits <= 8 ? 0 : 2;
    const std::size_t second = plane == 1 ? 1 : 0;
    return MemoryOf(id).bytes[large + second] * pixels;
}

std::int64_t PixFmtDescription::GetPlanFullSize(std::int32_t width, std::int32_t height, std::uint8_t plane) const {
    return SaturatingProduct(GetPlanWidthSize(width, plane), GetPlanHeight(height, plane));
}

std::int64_t PixFmtDescription::GetAllPlanesFullSize(std::int32_t width, std::int32_t height) const {
    std::int64_t size = 0;
    for (std::uint8_t plane = 0; plane < planes; ++plane) {
        size = SaturatingSum(size, GetPlanFullSize(width, height, plane));
    }
    return size;
}

PixColor PixFmtDescription::MakeColor(const PixColor& rgba) const {
    if (bits >= 9) {
        QUENZO_THROW(std::invalid_argument("Not implemented for HDR formats"));
    }
    const auto [red, green, blue, alpha] = rgba;
    const Yuv8 limited = ToLimitedRange(red, green, blue);
    const Yuv8 yuv = range == PixelColorRange::Full ? ToFullRange(limited) : limited;
    const int packed565 = (blue >> 3) << 11 | (green >> 2) << 5 | (red >> 3);
    // In the order of kColorBytes.
    const std::array<std::uint8_t, kColorBytes.size()> bytes = {0,
                                                                red,
                                                                green,
                                                                blue,
                                                                alpha,
                                                                yuv.y,
                                                                yuv.u,
                                                                yuv.v,
                                                                static_cast<std::uint8_t>(packed565 >> 8),
                                                                static_cast<std::uint8_t>(packed565 & 0xFF)};
    PixColor color = {};
    const PixelMemory& memory = MemoryOf(id);
    std::transform(memory.color.begin(), memory.color.end(), color.begin(),
                   [&bytes](std::uint8_t index) { return bytes[index]; });
    return color;
}

}  // namespace Quenzo
