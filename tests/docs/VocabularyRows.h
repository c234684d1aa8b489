#pragma once

#include <span>
#include <string_view>

namespace Quenzo::Docs {

/// What a row of the vocabulary is about. The kinds of containers are kinds of rows here.
enum class Kind { Key, Word, Number, Codec, Format };

/// A row of the vocabulary as it stands in its file.
struct Row {
    Kind kind;
    std::string_view constant;
    std::string_view value;
    std::string_view stored;  ///< the type stored under a key; the class of a container
    bool isListed;            ///< false for a codec that no catalogue offers
    std::string_view meaning;
};

/// The rows of a class, in the order of its files.
struct Owner {
    std::string_view name;
    std::string_view about;  ///< a phrase
    std::span<const Row> rows;
};

/// All classes that own constants.
std::span<const Owner> Owners();

}  // namespace Quenzo::Docs
