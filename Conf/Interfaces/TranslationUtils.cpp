#include <Conf/Interfaces/TranslationUtils.h>

#include <Conf/Interfaces/CodecTable.h>
#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>

#include <algorithm>
#include <string_view>

namespace Quenzo::Conf {

namespace {

constexpr std::string_view kPrefix = "CODEC_ID_";

std::string DerivedName(std::string_view codecId) {
    const std::string_view rest = codecId.substr(kPrefix.size());
    // ADPCM is shown as PCM, too: users tell audio by whether it is compressed, not by how samples are stored.
    if (rest.starts_with("PCM_") || rest.starts_with("ADPCM_")) {
        return "PCM";
    }
    std::string name(rest);
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

}  // namespace

bool TranslateCodecId(const std::string& codecId, std::string& displayName) {
    if (!codecId.starts_with(kPrefix) || codecId == Detail::CodecText::CODEC_ID_AUTO) {
        return false;
    }
    const Detail::CodecRow* const row = Detail::FindCodec(codecId);
    displayName = row != nullptr && !row->displayName.empty() ? std::string(row->displayName) : DerivedName(codecId);
    return true;
}

bool TranslateFormatId(const std::string& formatId, std::string& displayName) {
    const Detail::FormatRow* const row = Detail::FindFormat(formatId);
    if (row == nullptr || row->displayName.empty()) {
        return false;
    }
    displayName = row->displayName;
    return true;
}

}  // namespace Quenzo::Conf
