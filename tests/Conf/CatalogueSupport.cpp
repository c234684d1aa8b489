#include <tests/Conf/CatalogueSupport.h>

#include <Conf/Interfaces/ImplNames.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <Conf/Interfaces/Vocabulary/ConstraintVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>
#include <tests/Conf/TableSupport.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>

namespace Quenzo::Conf::Testing {

namespace {

namespace ImplNames = Quenzo::Proc::ImplNames;

struct Constant {
    std::string_view name;
    const std::string* constant;
    std::string_view value;
};

constexpr auto kConstants = std::to_array<Constant>({
#include <tests/Conf/VocabularyRows/Audio.inc>
#include <tests/Conf/VocabularyRows/Codec.inc>
#include <tests/Conf/VocabularyRows/Constraint.inc>
#include <tests/Conf/VocabularyRows/File.inc>
#include <tests/Conf/VocabularyRows/Format.inc>
#include <tests/Conf/VocabularyRows/Graph.inc>
#include <tests/Conf/VocabularyRows/ImplNames.inc>
#include <tests/Conf/VocabularyRows/Preset.inc>
#include <tests/Conf/VocabularyRows/Subtitle.inc>
#include <tests/Conf/VocabularyRows/Video.inc>
});

// The values of the constants whose names hold a text.
Strings ValuesOf(std::string_view part) {
    std::set<std::string> values;
    for (const Constant& row : kConstants) {
        if (row.name.find(part) != std::string_view::npos) {
            values.emplace(row.value);
        }
    }
    return {values.begin(), values.end()};
}

Strings AllProbes() {
    std::set<std::string> probes = {"", std::string(1, '\0'), std::string(100000, 'C')};
    for (const std::string& identifier : AllIdentifiers()) {
        const Strings lookalikes = Lookalikes(identifier);
        probes.insert(lookalikes.begin(), lookalikes.end());
        probes.insert(identifier);
    }
    return {probes.begin(), probes.end()};
}

}  // namespace

Strings ExpectedVideoCodecs() {
    return {
#include <tests/Conf/CatalogueRows/VideoCodecs.inc>
    };
}

Strings ExpectedAudioCodecs() {
    return {
#include <tests/Conf/CatalogueRows/AudioCodecs.inc>
    };
}

Strings ExpectedSubtitleCodecs() {
    return {
#include <tests/Conf/CatalogueRows/SubtitleCodecs.inc>
    };
}

Strings ExpectedCodecsOfNoKind() {
    return {
#include <tests/Conf/CatalogueRows/OtherCodecs.inc>
    };
}

Strings ExpectedRawPhotographs() {
    return {
#include <tests/Conf/CatalogueRows/RawPhotographs.inc>
    };
}

Strings ExpectedAudioContainers() {
    return {
#include <tests/Conf/CatalogueRows/AudioContainers.inc>
    };
}

Strings ExpectedImplementations() {
    return {
#include <tests/Conf/CatalogueRows/Implementations.inc>
    };
}

Strings ExpectedProprietaryCodecs() {
    return {
#include <tests/Conf/CatalogueRows/ProprietaryCodecs.inc>
    };
}

Strings ExpectedStillPictures() {
    return {
#include <tests/Conf/CatalogueRows/StillPictures.inc>
    };
}

std::vector<std::pair<std::string, std::string>> ExpectedFormatExtensions() {
    return {
#include <tests/Conf/CatalogueRows/FormatExtensions.inc>
    };
}

Strings Joined(Strings first, const Strings& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const Strings& AllIdentifiers() {
    static const Strings values = ValuesOf("::");
    return values;
}

const Strings& AllCodecConstants() {
    static const Strings values = ValuesOf("::CODEC_ID_");
    return values;
}

const Strings& AllContainerConstants() {
    static const Strings values = ValuesOf("IFormatFile::FORMAT_");
    return values;
}

Strings Lookalikes(const std::string& text) {
    Strings texts = {" " + text,         text + " ", text + "\t",       text + "\n",       std::string(1, '\0') + text,
                     text + text,        text + "_", InUpperCase(text), InLowerCase(text), text + std::string(1, '\0'),
                     text + '\0' + text, "x" + text};
    for (std::size_t size = 0; size < text.size(); ++size) {
        texts.push_back(text.substr(0, size));
    }
    for (const char other : {'x', '\0'}) {
        texts = Joined(std::move(texts), OneCharacterOff(text, other));
    }
    std::erase(texts, text);
    return texts;
}

const Strings& Probes() {
    static const Strings probes = AllProbes();
    return probes;
}

std::string InUpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return text;
}

std::string InLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

}  // namespace Quenzo::Conf::Testing
