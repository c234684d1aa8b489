#include <foundation/Property.h>

#include <boost/locale/utf.hpp>

#include <fmt/compile.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quenzo::Core {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;

void AppendEscaped(char character, std::string& out) {
    switch (character) {
        case '\\': out += "\\\\"; return;
        case '"': out += "\\\""; return;
        case '\n': out += "\\n"; return;
        case '\r': out += "\\r"; return;
        case '\t': out += "\\t"; return;
        default: break;
    }
    // Octal, because a hexadecimal escape in C has no end of its own.
    const auto byte = static_cast<unsigned char>(character);
    const auto digit = [byte](int shift) { return static_cast<char>('0' + (byte >> shift) % 8); };
    out.append({'\\', digit(6), digit(3), digit(0)});
}

bool NeedsEscape(char character) {
    constexpr char del = 0x7F;
    return character == '\\' || character == '"' || character == del || static_cast<unsigned char>(character) < ' ';
}

// Two code points are no characters, and a picture in XML has no place for them.
bool IsText(boost::locale::utf::code_point codePoint) {
    return boost::locale::utf::is_valid_codepoint(codePoint) && codePoint != 0xFFFE && codePoint != 0xFFFF;
}

// DOT reads "&#" as the start of a character's number, and stumbles over numbers that are no character's.
bool StartsReference(const char* position, const char* end) {
    return *position == '&' && position + 1 != end && position[1] == '#';
}

std::string Escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const char* const begin = position;
        const auto codePoint = Utf8::decode(position, end);
        if (!IsText(codePoint)) {
            AppendEscaped(*begin, out);
            position = begin + 1;
        } else if (NeedsEscape(*begin) || StartsReference(begin, end)) {
            AppendEscaped(*begin, out);
        } else {
            out.append(begin, position);
        }
    }
    return out;
}

const char* TypeName(PropertyTypes type) {
    switch (type) {
        case PropertyTypes::None: return "none";
        case PropertyTypes::Bool: return "bool";
        case PropertyTypes::Int64: return "int64";
        case PropertyTypes::Ratio: return "ratio";
        case PropertyTypes::String: return "string";
        case PropertyTypes::Node: return "node";
    }
    return "?";
}

std::string ValueText(const Property& leaf) {
    switch (leaf.GetType()) {
        case PropertyTypes::Bool: return leaf.GetBool() ? "true" : "false";
        case PropertyTypes::Int64: return std::to_string(leaf.GetInt64());
        case PropertyTypes::Ratio:
            return fmt::format(FMT_COMPILE("{}/{}"), leaf.GetRatio().numerator(), leaf.GetRatio().denominator());
        case PropertyTypes::String: return Escaped(leaf.GetString());
        case PropertyTypes::None:
        case PropertyTypes::Node: break;
    }
    return {};
}

void PrintLine(const Property& property, std::size_t level, std::ostream& os, bool withType) {
    os << std::string(2 * level, ' ') << Escaped(property.GetName());
    const PropertyTypes type = property.GetType();
    if (withType) {
        os << " [" << TypeName(type) << ']';
    }
    if (type != PropertyTypes::Node && type != PropertyTypes::None) {
        os << ": " << ValueText(property);
    }
    os << '\n';
}

}  // namespace

void PrintCorePropertyValue(const Property& property, int indent, std::ostream& os, bool withTypes, bool withChildren) {
    const auto level = static_cast<std::size_t>(std::max(indent, 0));
    PrintLine(property, level, os, withTypes);
    if (!withChildren) {
        return;
    }
    std::vector<std::pair<Property::const_iterator, Property::const_iterator>> open = {
        {property.begin(), property.end()}};
    while (!open.empty()) {
        auto& [next, end] = open.back();
        if (next == end) {
            open.pop_back();
            continue;
        }
        const Property& child = *next++;
        PrintLine(child, level + open.size(), os, withTypes);
        open.emplace_back(child.begin(), child.end());
    }
}

}  // namespace Quenzo::Core
