#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Quenzo::Tools {

/// A kind of identifiers that a person may type: in any case, without the prefix that they share, and with any sign for
/// "_".
struct IdentifierKind {
    std::string name;                  ///< what one is called, such as "codec"
    std::string prefix;                ///< what all begin with, or nothing
    std::string listCommand;           ///< the command that lists them, or nothing
    std::vector<std::string> all;      ///< the exact forms
    std::vector<std::string> aliases;  ///< another name for each, or empty when none has one
};

/// The exact form of an identifier as somebody typed it, which may also be the other name of a single one. Fails with
/// No when there is none; the message names those that look most like it, or else the command that lists them, or else
/// all when they are few.
std::string FindExact(const IdentifierKind& kind, const std::string& typed);

/// The identifiers that look most like what was typed, the best first; at most five, and none when nothing does. What
/// has fewer than three letters and digits looks like nothing.
std::vector<std::string> FindNearest(const IdentifierKind& kind, const std::string& typed);

}  // namespace Quenzo::Tools
