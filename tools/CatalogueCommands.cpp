#include <tools/CatalogueCommands.h>

#include <tools/Classes.h>
#include <tools/Vocabulary.h>

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/ColorCharacteristic.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>
#include <Conf/Interfaces/Stub.h>

#include <fmt/format.h>

#include <cstdint>
#include <utility>

namespace Quenzo::Tools {

namespace {

Report ReportOf(Report::Table table) {
    Report report;
    report.Add(std::move(table));
    return report;
}

std::string NameOf(Conf::FileMediaType type) {
    switch (type) {
        case Conf::FileMediaType::AllFiles: return "all files";
        case Conf::FileMediaType::Video: return "video";
        case Conf::FileMediaType::Audio: return "audio";
        case Conf::FileMediaType::Subtitles: return "subtitles";
        case Conf::FileMediaType::Images: return "images";
    }
    return {};
}

std::string NameOf(PixelColorRange range) {
    switch (range) {
        case PixelColorRange::Unspecified: return "";
        case PixelColorRange::Limited: return "limited";
        case PixelColorRange::Full: return "full";
    }
    return {};
}

// The size of the chroma planes in proportion to the frame's.
std::string ChromaOf(const PixFmtDescription& format) {
    const auto fraction = [](std::uint8_t log2) { return log2 == 0 ? "1" : fmt::format("1/{}", 1 << log2); };
    return fmt::format("{} x {}", fraction(format.log2ChromaW), fraction(format.log2ChromaH));
}

Report::Texts NamesOfFlags(std::int32_t flags) {
    static const std::pair<PixFmtDescription::Flag, const char*> names[] = {
        {PixFmtDescription::Planar, "planar"}, {PixFmtDescription::Rgb, "RGB"},     {PixFmtDescription::Yuv, "YUV"},
        {PixFmtDescription::Gray, "gray"},     {PixFmtDescription::Alpha, "alpha"}, {PixFmtDescription::Float, "float"},
    };
    Report::Texts set;
    for (const auto& [flag, name] : names) {
        if ((flags & flag) != 0) {
            set.emplace_back(name);
        }
    }
    return set;
}

}  // namespace

Report ListCodecs() {
    Report::Table table{"codecs", {"id", "class", "display name", "remarks"}, {}};
    for (const std::string& id : Conf::GetAllCodecIds()) {
        table.rows.push_back({id, ClassOfCodec(id), DisplayNameOfCodec(id), RemarksOnCodec(id)});
    }
    return ReportOf(std::move(table));
}

Report ListFormats() {
    Report::Table table{"formats", {"id", "class", "display name", "extensions"}, {}};
    for (const Term& term : AllFormats()) {
        table.rows.push_back(
            {term.id, ClassOfFormat(term.id), DisplayNameOfFormat(term.id), Conf::GetExtensionsByFormat(term.id)});
    }
    return ReportOf(std::move(table));
}

Report ListGroups() {
    Report::Table table{"groups", {"group", "kind", "tip", "extensions"}, {}};
    for (const auto& [type, group] : Conf::GetSupportedFormats()) {
        table.rows.push_back(
            {group, NameOf(type), Conf::GetFormatExtentionTip(group), Conf::GetSupportedFormatExtensions(group)});
    }
    return ReportOf(std::move(table));
}

Report ListLayouts() {
    Report::Table table{"layouts", {"id", "channels"}, {}};
    for (const Conf::LayoutRecord& row : Conf::LayoutRecord::EnumerateValid()) {
        table.rows.push_back({row.textId, std::int64_t{row.channels}});
    }
    return ReportOf(std::move(table));
}

Report ListSampleFormats() {
    Report::Table table{"sample formats", {"id", "bits", "planar", "float", "signed", "twin"}, {}};
    for (const Conf::SampleFmtRecord& row : Conf::SampleFmtRecord::EnumerateValid()) {
        table.rows.push_back({row.textId, std::int64_t{row.bits}, row.planar, row.isFloat, row.isSigned,
                              Conf::SampleFmtRecord::Find(row.twin).textId});
    }
    return ReportOf(std::move(table));
}

Report ListPixelFormats() {
    Report::Table table{
        "pixel formats", {"name", "number", "components", "planes", "chroma", "bits", "shift", "range", "flags"}, {}};
    for (const PixFmtDescription& row : PixFmtDescription::s_list) {
        table.rows.push_back({row.name, static_cast<std::int64_t>(row.id), std::int64_t{row.components},
                              std::int64_t{row.planes}, ChromaOf(row), std::int64_t{row.bits}, std::int64_t{row.shift},
                              NameOf(row.range), NamesOfFlags(row.flags)});
    }
    return ReportOf(std::move(table));
}

Report ListColours() {
    const Report::Texts columns = {"number", "name", "accepted", "meaning"};
    using Conf::ColorPrimaries;
    using Conf::TransferFunction;
    using Conf::YCbCrMatrix;
    Report report;
    report.Add({"primaries",
                columns,
                {
#define QUENZO_PRIMARIES(number, name, accepted, meaning) \
    {std::int64_t{number}, #name, Conf::IsValidColorPrimaries(ColorPrimaries::name), meaning},
#include <Conf/Interfaces/ColorCodes.def>
                }});
    report.Add({"transfer functions",
                columns,
                {
#define QUENZO_TRANSFER(number, name, accepted, meaning) \
    {std::int64_t{number}, #name, Conf::IsValidTransferFunction(TransferFunction::name), meaning},
#include <Conf/Interfaces/ColorCodes.def>
                }});
    report.Add({"matrices",
                columns,
                {
#define QUENZO_MATRIX(number, name, accepted, meaning) \
    {std::int64_t{number}, #name, Conf::IsValidYCbCrMatrix(YCbCrMatrix::name), meaning},
#include <Conf/Interfaces/ColorCodes.def>
                }});
    return report;
}

}  // namespace Quenzo::Tools
