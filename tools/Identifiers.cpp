#include <tools/Identifiers.h>

#include <tools/Failure.h>

#include <foundation/Throw.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace Quenzo::Tools {

namespace {

constexpr std::size_t kMostNearest = 5;
constexpr std::size_t kShortestSought = 3;
constexpr std::size_t kMostListed = 10;

// What counts when a text is compared loosely: letters in lower case, and digits.
std::string Folded(std::string_view text) {
    std::string folded;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            folded += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return folded;
}

std::string FoldedWithoutPrefix(const IdentifierKind& kind, std::string_view text) {
    std::string folded = Folded(text);
    const std::string prefix = Folded(kind.prefix);
    return folded.starts_with(prefix) ? folded.substr(prefix.size()) : folded;
}

// How many characters have to be inserted, removed, replaced or swapped with their neighbour to get from one text to
// the other (the optimal string alignment distance).
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row.back();
}

// The identifiers that go by another name, too.
std::vector<std::string> FindByAlias(const IdentifierKind& kind, const std::string& typed) {
    const std::string sought = Folded(typed);
    std::vector<std::string> found;
    for (std::size_t i = 0; i < kind.aliases.size(); ++i) {
        const bool isNew = std::find(found.begin(), found.end(), kind.all[i]) == found.end();
        if (!sought.empty() && Folded(kind.aliases[i]) == sought && isNew) {
            found.push_back(kind.all[i]);
        }
    }
    return found;
}

}  // namespace

std::vector<std::string> FindNearest(const IdentifierKind& kind, const std::string& typed) {
    const std::string sought = FoldedWithoutPrefix(kind, typed);
    if (sought.size() < kShortestSought) {
        return {};
    }
    // A longer text may have more mistakes in it; three in a text of three would make everything look alike.
    const std::size_t furthest = sought.size() / 3;
    std::vector<std::pair<std::size_t, std::string>> found;
    for (std::size_t i = 0; i < kind.all.size(); ++i) {
        std::size_t distance = Distance(sought, FoldedWithoutPrefix(kind, kind.all[i]));
        if (!kind.aliases.empty()) {
            distance = std::min(distance, Distance(sought, Folded(kind.aliases[i])));
        }
        if (distance <= furthest) {
            found.emplace_back(distance, kind.all[i]);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (const auto& [distance, identifier] : found) {
        if (nearest.size() < kMostNearest && std::find(nearest.begin(), nearest.end(), identifier) == nearest.end()) {
            nearest.push_back(identifier);
        }
    }
    return nearest;
}

std::string FindExact(const IdentifierKind& kind, const std::string& typed) {
    if (std::find(kind.all.begin(), kind.all.end(), typed) != kind.all.end()) {
        return typed;
    }
    const std::string sought = FoldedWithoutPrefix(kind, typed);
    for (const std::string& identifier : kind.all) {
        if (!sought.empty() && FoldedWithoutPrefix(kind, identifier) == sought) {
            return identifier;
        }
    }
    const std::vector<std::string> named = FindByAlias(kind, typed);
    if (named.size() == 1) {
        return named.front();
    }
    const std::vector<std::string> nearest = named.empty() ? FindNearest(kind, typed) : named;
    std::string hint;
    if (!nearest.empty()) {
        hint = fmt::format("; the nearest: {}", fmt::join(nearest, ", "));
    } else if (!kind.listCommand.empty()) {
        hint = fmt::format(" (quenzo-conf {} lists them)", kind.listCommand);
    } else if (kind.all.size() <= kMostListed) {
        hint = fmt::format("; there is {}", fmt::join(kind.all, ", "));
    }
    QUENZO_THROW(Failure(ExitStatus::No, fmt::format("there is no {} {}{}", kind.name, Quoted(typed), hint)));
}

}  // namespace Quenzo::Tools
