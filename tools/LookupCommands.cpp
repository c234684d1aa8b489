#include <tools/LookupCommands.h>

#include <tools/Classes.h>
#include <tools/Failure.h>
#include <tools/Vocabulary.h>

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>

#include <algorithm>

namespace Quenzo::Tools {

namespace {

using Texts = Report::Texts;

bool Contains(const Texts& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

// How far a codec may be used on one side of a conversion.
std::string StateOf(const std::string& codecId, const Texts& disabled, const Texts& blackListed, bool isExternal) {
    if (Contains(blackListed, codecId)) {
        return "black-listed";
    }
    if (Contains(disabled, codecId)) {
        return "disabled";
    }
    return isExternal ? "external" : "enabled";
}

Texts GroupsOf(const std::string& extension) {
    Texts groups;
    for (const auto& [type, group] : Conf::GetSupportedFormats()) {
        if (Contains(Conf::GetSupportedFormatExtensions(group), extension)) {
            groups.push_back(group);
        }
    }
    return groups;
}

}  // namespace

Report LookUpCodec(const std::string& typed) {
    const std::string id = FindExact(CodecIdentifiers(), typed);
    const std::string shortName = Conf::GetDisplayCodecName(id);
    Report report;
    report.Add("codec", id);
    report.Add("meaning", MeaningOfCodec(id));
    report.Add("class", ClassOfCodec(id));
    report.Add("display name", DisplayNameOfCodec(id));
    report.Add("short name", shortName == id ? std::string() : shortName);
    report.Add("catalogues", CataloguesOfCodec(id));
    report.Add("proprietary", Conf::IsProprietaryCodec(id));
    report.Add("decoding", StateOf(id, Conf::GetDisabledDecoderList(), Conf::GetBlackListedDecoders(),
                                   Conf::IsExternalDecoder(id)));
    report.Add("encoding", StateOf(id, Conf::GetDisabledEncoderList(), Conf::GetBlackListedEncoders(),
                                   Conf::IsExternalEncoder(id)));
    if (Conf::IsAudioCodec(id)) {
        report.Add("bitrate needed", Conf::IsAudioBitrateRequired(id));
    }
    return report;
}

Report LookUpFormat(const std::string& typed) {
    const std::string id = FindExact(FormatIdentifiers(), typed);
    const Texts& extensions = Conf::GetExtensionsByFormat(id);
    Report report;
    report.Add("container", id);
    report.Add("meaning", MeaningOfFormat(id));
    report.Add("class", ClassOfFormat(id));
    report.Add("display name", DisplayNameOfFormat(id));
    report.Add("catalogues", CataloguesOfFormat(id));
    report.Add("extensions", extensions);
    report.Add("extension of a new file", extensions.empty() ? std::string() : extensions.front());
    report.Add("reading", Contains(Conf::GetDisabledFormatParserList(), id) ? "disabled" : "enabled");
    report.Add("writing", Contains(Conf::GetDisabledFormatMuxerList(), id) ? "disabled" : "enabled");
    return report;
}

Report LookUpExtension(const std::string& typed) {
    const std::string extension = FindExact(ExtensionIdentifiers(), typed);
    const Texts& formats = Conf::GetFormatsByExtension(extension);
    Texts newFiles;
    std::copy_if(formats.begin(), formats.end(), std::back_inserter(newFiles), [&extension](const std::string& format) {
        return Conf::GetDefaultFileExtensionForContainer(format) == extension;
    });
    Report report;
    report.Add("extension", extension);
    report.Add("containers", formats);
    report.Add("new files of", newFiles);
    report.Add("groups", GroupsOf(extension));
    return report;
}

Report LookUpUti(const std::string& typed) {
    const std::string uti = FindExact(UtiIdentifiers(), typed);
    const std::string& format = Conf::UTI::FindFormatID(uti);
    Report report;
    report.Add("type identifier", uti);
    report.Add("can be opened", !format.empty());
    report.Add("container", format);
    report.Add("codec", Conf::UTI::FindCodecID(uti));
    report.Add("container of an animation", Conf::UTI::FindAnimatedFormatID(uti));
    report.Add("codec of an animation", Conf::UTI::FindAnimatedCodecID(uti));
    report.Add("extensions", Conf::GetExtensionsByFormat(format));
    return report;
}

}  // namespace Quenzo::Tools
