#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>
#include <Conf/Interfaces/TableRows.h>
#include <Conf/Interfaces/TextIndex.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Quenzo::Conf {

namespace {

constexpr auto kTextIds = std::to_array<Detail::FixedText<15>>({
#define QUENZO_SAMPLE_FORMAT(value, name, bits, planar, isFloat, isSigned, twin) #name,
#include <Conf/Interfaces/SampleFormats.def>
});

static_assert(Detail::AllDifferent(kTextIds));

constexpr Detail::TextIndex<Detail::TextList<kTextIds>> kTextIndex;

// What the rows say, for the compiler to check; the rows themselves own texts, which it cannot read.
struct Facts {
    SampleFormats format;
    std::int32_t bits;
    bool planar, isFloat, isSigned;
    SampleFormats twin;
};

constexpr auto kFacts = std::to_array<Facts>({
#define QUENZO_SAMPLE_FORMAT(value, name, bits, planar, isFloat, isSigned, twin) \
    {SampleFormats::name, bits, planar, isFloat, isSigned, SampleFormats::twin},
#include <Conf/Interfaces/SampleFormats.def>
});

// A value below -1 becomes a place far behind the last.
constexpr std::size_t PlaceOf(SampleFormats format) {
    return static_cast<std::size_t>(std::int64_t{static_cast<std::int32_t>(format)} + 1);
}

constexpr bool RowsStandAtTheirValues() {
    std::size_t place = 0;
    return std::all_of(kFacts.begin(), kFacts.end(),
                       [&place](const Facts& row) { return PlaceOf(row.format) == place++; });
}

constexpr bool IsTwin(const Facts& row) {
    const Facts& twin = kFacts[PlaceOf(row.twin)];
    const bool inOtherArrangement = twin.planar != row.planar || row.format == SampleFormats::SAMPLE_FMT_NONE;
    return twin.twin == row.format && inOtherArrangement && twin.bits == row.bits && twin.isFloat == row.isFloat &&
           twin.isSigned == row.isSigned;
}

static_assert(RowsStandAtTheirValues());
static_assert(std::all_of(kFacts.begin(), kFacts.end(), IsTwin));

}  // namespace

const std::array<SampleFmtRecord, 11>& SampleFmtRecord::Enumerate() noexcept { return s_rows; }

const std::array<SampleFmtRecord, 10>& SampleFmtRecord::EnumerateValid() noexcept { return s_validRows; }

const SampleFmtRecord& SampleFmtRecord::Find(SampleFormats format) {
    return Detail::RowAt(s_rows, PlaceOf(format), "Provided sample format is not found in list");
}

const SampleFmtRecord& SampleFmtRecord::Find(const std::string& textId) {
    return Detail::RowAt(s_rows, kTextIndex.Find(textId), "Provided sample textId is not found in list");
}

const SampleFmtRecord& SampleFmtRecord::Find(int bits) {
    return Detail::FindRow(
        s_rows, [bits](const SampleFmtRecord& row) { return row.bits == bits; },
        "Provided sample bits is not found in list");
}

const SampleFmtRecord& SampleFmtRecord::Find(int bits, bool isFloat) {
    return Detail::FindRow(
        s_rows, [bits, isFloat](const SampleFmtRecord& row) { return row.bits == bits && row.isFloat == isFloat; },
        "Provided sample bits and float specifier is not found in list");
}

}  // namespace Quenzo::Conf
