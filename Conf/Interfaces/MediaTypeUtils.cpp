#include <Conf/Interfaces/MediaTypeUtils.h>

#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/Kept.h>
#include <Conf/Interfaces/TextIndex.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <fmt/compile.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace Quenzo::Conf {

namespace {

using Detail::FileText;
using Detail::FormatExtension;
using Detail::Keep;
using Detail::kFormatExtensions;
using Strings = std::vector<std::string>;

struct Group {
    std::string_view name;
    std::optional<FileMediaType> offeredAs;
    std::string_view tip;
    const char* extensions;
};

constexpr auto AllFiles = FileMediaType::AllFiles;
constexpr auto Video = FileMediaType::Video;
constexpr auto Audio = FileMediaType::Audio;
constexpr auto Subtitles = FileMediaType::Subtitles;
constexpr auto Images = FileMediaType::Images;
constexpr std::nullopt_t NotOffered = std::nullopt;
constexpr std::string_view NoTip;

constexpr auto kGroups = std::to_array<Group>({
#define QUENZO_GROUP(name, kind, tip, extensions) {FileText::name, kind, tip, extensions},
#include <Conf/Interfaces/FileGroups.def>
});

const Group* FindGroup(const std::string& name) {
    const auto* const found =
        std::find_if(kGroups.begin(), kGroups.end(), [&name](const Group& group) { return group.name == name; });
    return found != kGroups.end() ? found : nullptr;
}

using Member = std::string_view FormatExtension::*;

// How many different texts the pairs have in one member.
constexpr std::size_t CountDifferent(Member member) {
    std::size_t count = 0;
    for (std::size_t place = 0; place < kFormatExtensions.size(); ++place) {
        const auto* const before = kFormatExtensions.begin() + static_cast<std::ptrdiff_t>(place);
        const std::string_view text = kFormatExtensions[place].*member;
        const bool isNew =
            std::none_of(kFormatExtensions.begin(), before,
                         [text, member](const FormatExtension& earlier) { return earlier.*member == text; });
        count += isNew ? 1 : 0;
    }
    return count;
}

template <std::size_t N>
using CaselessIndex = Detail::TextIndex<N, Detail::CaselessWords>;

// What is answered of any unknown text.
const Strings& Nothing() {
    static const Strings& nothing = Keep(Strings());
    return nothing;
}

// Finds, for a text in any case, what stands in the other member of its pairs.
template <std::size_t N>
class PairIndex {
public:
    PairIndex(const CaselessIndex<N>& index, Member from, Member to) : index_(index) {
        for (const FormatExtension& pair : kFormatExtensions) {
            found_[index_.Find(pair.*from)].emplace_back(pair.*to);
        }
    }

    const Strings& Find(std::string_view text) const {
        const std::size_t place = index_.Find(text);
        if (place < N) {
            return found_[place];
        }
        return Nothing();
    }

private:
    const CaselessIndex<N>& index_;
    std::array<Strings, N> found_;
};

// The different texts of one member, in the order in which they first appear.
template <std::size_t N>
constexpr std::array<std::string_view, N> Different(Member member) {
    std::array<std::string_view, N> texts;
    std::size_t count = 0;
    for (const FormatExtension& pair : kFormatExtensions) {
        const auto end = texts.begin() + static_cast<std::ptrdiff_t>(count);
        if (std::find(texts.begin(), end, pair.*member) == end) {
            texts[count++] = pair.*member;
        }
    }
    return texts;
}

constexpr std::size_t kFormats = CountDifferent(&FormatExtension::format);
constexpr std::size_t kExtensions = CountDifferent(&FormatExtension::extension);
constexpr CaselessIndex<kFormats> kFormatIndex(Different<kFormats>(&FormatExtension::format));
constexpr CaselessIndex<kExtensions> kExtensionIndex(Different<kExtensions>(&FormatExtension::extension));

}  // namespace

std::vector<std::pair<FileMediaType, std::string>> GetSupportedFormats() {
    std::vector<std::pair<FileMediaType, std::string>> offered;
    for (const Group& group : kGroups) {
        if (group.offeredAs) {
            offered.emplace_back(*group.offeredAs, group.name);
        }
    }
    return offered;
}

Strings GetSupportedFormatExtensions(const std::string& groupId) {
    const Group* const group = FindGroup(groupId);
    if (group == nullptr) {
        QUENZO_THROW(std::invalid_argument("Unknown group id"));
    }
    Strings extensions;
    SplitString(extensions, group->extensions, ';');
    return extensions;
}

std::string GetFormatExtentionTip(const std::string& groupId) {
    const Group* const group = FindGroup(groupId);
    return group != nullptr ? std::string(group->tip) : std::string();
}

const Strings& GetExtensionsByFormat(const std::string& format) {
    static const auto& extensions =
        Keep(PairIndex(kFormatIndex, &FormatExtension::format, &FormatExtension::extension));
    return extensions.Find(format);
}

const Strings& GetFormatsByExtension(const std::string& extension) {
    static const auto& formats =
        Keep(PairIndex(kExtensionIndex, &FormatExtension::extension, &FormatExtension::format));
    return formats.Find(extension);
}

const std::string& GetDefaultFileExtensionForContainer(const std::string& container) {
    const Strings& extensions = GetExtensionsByFormat(container);
    if (extensions.empty()) {
        QUENZO_THROW(std::invalid_argument(fmt::format(FMT_COMPILE("Unknown media container name: {}"), container)));
    }
    return extensions.front();
}

}  // namespace Quenzo::Conf
