#include <tools/Vocabulary.h>

#include <Conf/Interfaces/IFormatFile.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TranslationUtils.h>

#include <algorithm>

namespace Quenzo::Tools {

namespace {

std::string MeaningIn(const std::vector<Term>& terms, const std::string& id) {
    const auto found = std::find_if(terms.begin(), terms.end(), [&id](const Term& term) { return term.id == id; });
    return found != terms.end() ? found->meaning : std::string();
}

std::vector<std::string> IdsOf(const std::vector<Term>& terms) {
    std::vector<std::string> ids;
    ids.reserve(terms.size());
    for (const Term& term : terms) {
        ids.push_back(term.id);
    }
    return ids;
}

}  // namespace

const std::vector<Term>& AllCodecs() {
    static const std::vector<Term> terms = {
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, meaning},
#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, meaning},
#define QUENZO_CODEC_AS(name, value, catalogue, display, meaning) {value, meaning},
#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, meaning},
#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>
#define QUENZO_CODEC(name, catalogue, display, meaning) {#name, meaning},
#include <Conf/Interfaces/Vocabulary/CodecIds.def>
    };
    return terms;
}

const std::vector<Term>& AllFormats() {
    static const std::vector<Term> terms = {
#define QUENZO_FORMAT(name, value, kind, display, meaning) {value, meaning},
#include <Conf/Interfaces/Vocabulary/FileFormats.def>
    };
    return terms;
}

std::string MeaningOfCodec(const std::string& codecId) { return MeaningIn(AllCodecs(), codecId); }

std::string MeaningOfFormat(const std::string& format) { return MeaningIn(AllFormats(), format); }

IdentifierKind CodecIdentifiers() {
    IdentifierKind kind{"codec", "CODEC_ID_", "codecs", IdsOf(AllCodecs()), {}};
    // Where a codec has a short name, people know it by that (HEVC); the other codecs' display names are as good.
    for (const std::string& id : kind.all) {
        std::string alias = Conf::GetDisplayCodecName(id);
        if (alias == id) {
            Conf::TranslateCodecId(id, alias);
        }
        kind.aliases.push_back(alias);
    }
    return kind;
}

IdentifierKind FormatIdentifiers() {
    IdentifierKind kind{"container", "FORMAT_", "formats", IdsOf(AllFormats()), {}};
    for (const std::string& id : kind.all) {
        const auto& extensions = Conf::GetExtensionsByFormat(id);
        kind.aliases.push_back(extensions.empty() ? id : extensions.front());
    }
    return kind;
}

IdentifierKind ExtensionIdentifiers() {
    IdentifierKind kind{"extension", "", "groups", {}, {}};
    for (const auto& [format, extension] : Conf::GetFormatExtensionList()) {
        kind.all.push_back(extension);
    }
    for (const auto& [type, group] : Conf::GetSupportedFormats()) {
        const auto extensions = Conf::GetSupportedFormatExtensions(group);
        kind.all.insert(kind.all.end(), extensions.begin(), extensions.end());
    }
    return kind;
}

IdentifierKind UtiIdentifiers() {
    using Conf::IFormatFile;
    return {"type identifier",
            "",
            "",
            {
#define QUENZO_UTI(uti, format, codec) uti,
#define QUENZO_UTI_RAW(format) IFormatFile::format,
#define QUENZO_UTI_KNOWN_ONLY(uti) uti,
#include <Conf/Interfaces/StillImageUTIs.def>
            },
            {}};
}

IdentifierKind PixelFormatIdentifiers() {
    IdentifierKind kind{"pixel format", "", "pixel-formats", {}, {}};
    for (const PixFmtDescription& format : PixFmtDescription::s_list) {
        kind.all.push_back(format.name);
    }
    return kind;
}

}  // namespace Quenzo::Tools
