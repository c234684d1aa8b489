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
#include <type_traits>

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

// What is answered of any unknown text.
const Strings& Nothing() {
    static const Strings& nothing = Keep(Strings());
    return nothing;
}

// Whether the pair at a place is the first with the text that it has in a member.
template <auto Member>
constexpr bool IsFirst(std::size_t place) {
    const std::string_view text = kFormatExtensions[place].*Member;
    return std::none_of(kFormatExtensions.begin(), kFormatExtensions.begin() + static_cast<std::ptrdiff_t>(place),
                        [text](const FormatExtension& earlier) { return earlier.*Member == text; });
}

template <auto Member>
constexpr std::size_t CountDifferent() {
    std::size_t count = 0;
    for (std::size_t place = 0; place < kFormatExtensions.size(); ++place) {
        count += IsFirst<Member>(place) ? 1 : 0;
    }
    return count;
}

// The different texts of one member, in the order in which they first appear.
template <auto Member>
constexpr auto Different() {
    using Text = std::decay_t<decltype(FormatExtension().*Member)>;
    std::array<Text, CountDifferent<Member>()> texts;
    std::size_t count = 0;
    for (std::size_t place = 0; place < kFormatExtensions.size(); ++place) {
        if (IsFirst<Member>(place)) {
            texts[count++] = kFormatExtensions[place].*Member;
        }
    }
    return texts;
}

// Finds, for a text in any case, what stands in the other member of its pairs.
template <auto From, auto To>
class PairIndex {
public:
    PairIndex() {
        for (const FormatExtension& pair : kFormatExtensions) {
            found_[kIndex.Find(pair.*From)].emplace_back(pair.*To);
        }
    }

    // Flat, as the calls inside take a quarter of the time.
    [[gnu::flatten]] const Strings& Find(std::string_view text) const {
        const std::size_t place = kIndex.Find(text);
        return place < found_.size() ? found_[place] : Nothing();
    }

private:
    static constexpr auto kTexts = Different<From>();
    static constexpr Detail::TextIndex<Detail::TextList<kTexts>, Detail::CaselessWords> kIndex{};

    std::array<Strings, kTexts.size()> found_;
};

// On its own, so that a look-up, with the first of which the index is made, stays a small function.
template <auto From, auto To>
[[gnu::noinline]] const PairIndex<From, To>& KeptPairIndex() {
    return Keep(PairIndex<From, To>());
}

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
    static const auto& extensions = KeptPairIndex<&FormatExtension::format, &FormatExtension::extension>();
    return extensions.Find(format);
}

const Strings& GetFormatsByExtension(const std::string& extension) {
    static const auto& formats = KeptPairIndex<&FormatExtension::extension, &FormatExtension::format>();
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
