#include <tools/Classes.h>

#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TranslationUtils.h>

#include <algorithm>

namespace Quenzo::Tools {

namespace {

using Texts = std::vector<std::string>;

struct Catalogue {
    const char* name;
    const Texts& (*list)();
};

const Catalogue kCodecCatalogues[] = {
    {"video codecs", Conf::GetAllVideoCodecs},
    {"audio codecs", Conf::GetAllAudioCodecs},
    {"subtitle codecs", Conf::GetAllSubtitleCodecs},
    {"all codecs", Conf::GetAllCodecIds},
    {"proprietary codecs", Conf::GetProprietaryCodecs},
    {"disabled decoders", Conf::GetDisabledDecoderList},
    {"disabled encoders", Conf::GetDisabledEncoderList},
    {"black-listed decoders", Conf::GetBlackListedDecoders},
    {"black-listed encoders", Conf::GetBlackListedEncoders},
    {"external decoders", Conf::GetExternalDecoderList},
    {"external encoders", Conf::GetExternalEncoderList},
};

const Catalogue kFormatCatalogues[] = {
    {"audio containers", Conf::GetAudioContainerList},
    {"text subtitle containers", Conf::GetTextSubtitleContainerList},
    {"raw photographs", Conf::GetRAWImageFormatList},
    {"HEIF pictures", Conf::GetHEIFImageFormatList},
    {"projects", Conf::GetQZPFormatList},
    {"audio CD", Conf::GetCDFormatList},
    {"disabled parsers", Conf::GetDisabledFormatParserList},
    {"disabled muxers", Conf::GetDisabledFormatMuxerList},
};

bool Contains(const Texts& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

template <std::size_t N>
Texts NamesOf(const Catalogue (&catalogues)[N], const std::string& id) {
    Texts names;
    for (const Catalogue& catalogue : catalogues) {
        if (Contains(catalogue.list(), id)) {
            names.emplace_back(catalogue.name);
        }
    }
    return names;
}

}  // namespace

std::string ClassOfCodec(const std::string& codecId) {
    // "No codec" closes the lists of video and of audio codecs but is neither.
    if (codecId == Conf::IFormatCodec::CODEC_ID_NONE) {
        return "other";
    }
    if (Conf::IsVideoCodec(codecId)) {
        return "video";
    }
    if (Conf::IsAudioCodec(codecId)) {
        return "audio";
    }
    return Conf::IsSubtitleCodec(codecId) ? "subtitles" : "other";
}

std::string DisplayNameOfCodec(const std::string& codecId) {
    std::string name;
    Conf::TranslateCodecId(codecId, name);
    return name;
}

Texts CataloguesOfCodec(const std::string& codecId) { return NamesOf(kCodecCatalogues, codecId); }

Texts RemarksOnCodec(const std::string& codecId) {
    const std::pair<bool, const char*> remarks[] = {
        {Conf::IsProprietaryCodec(codecId), "proprietary"},
        {Contains(Conf::GetDisabledDecoderList(), codecId), "decoder disabled"},
        {Contains(Conf::GetDisabledEncoderList(), codecId), "encoder disabled"},
        {Contains(Conf::GetBlackListedDecoders(), codecId), "decoder black-listed"},
        {Contains(Conf::GetBlackListedEncoders(), codecId), "encoder black-listed"},
        {Conf::IsExternalDecoder(codecId), "external decoder"},
        {Conf::IsExternalEncoder(codecId), "external encoder"},
    };
    Texts texts;
    for (const auto& [isTrue, text] : remarks) {
        if (isTrue) {
            texts.emplace_back(text);
        }
    }
    return texts;
}

std::string ClassOfFormat(const std::string& format) {
    using Conf::AnimatedImages;
    if (Contains(Conf::GetRAWImageFormatList(), format)) {
        return "raw photograph";
    }
    if (Conf::IsImageContainer(format, AnimatedImages::Exclude)) {
        return "picture";
    }
    if (Conf::IsImageContainer(format, AnimatedImages::Include)) {
        return "animation";
    }
    if (Conf::IsAudioContainer(format)) {
        return "audio";
    }
    return Conf::IsTextSubtitleContainer(format) ? "text subtitles" : "other";
}

std::string DisplayNameOfFormat(const std::string& format) {
    std::string name;
    Conf::TranslateFormatId(format, name);
    return name;
}

Texts CataloguesOfFormat(const std::string& format) {
    Texts names = NamesOf(kFormatCatalogues, format);
    if (Conf::GetImageContainerSet(Conf::AnimatedImages::Exclude).contains(format)) {
        names.emplace_back("still pictures");
    }
    if (Conf::GetImageContainerSet(Conf::AnimatedImages::Include).contains(format)) {
        names.emplace_back("still and animated pictures");
    }
    return names;
}

}  // namespace Quenzo::Tools
