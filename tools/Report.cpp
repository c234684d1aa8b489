#include <tools/Report.h>

#include <tools/Files.h>

#include <fmt/format.h>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <string_view>
#include <type_traits>

namespace Quenzo::Tools {

namespace {

using Json = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

constexpr std::size_t kLineLength = 120;

// The pieces of a value between which a line may be broken.
Report::Texts PiecesOf(const Report::Value& value) {
    return std::visit(
        [](const auto& held) -> Report::Texts {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, bool>) {
                return {held ? "yes" : "no"};
            } else if constexpr (std::is_same_v<T, Report::Texts>) {
                return held.empty() ? Report::Texts{"-"} : held;
            } else if constexpr (std::is_same_v<T, std::string>) {
                return {held.empty() ? "-" : held};
            } else {
                return {fmt::format("{}", held)};
            }
        },
        value);
}

// All pieces, joined; the lines after the first begin at `indent`.
std::string Wrapped(const Report::Texts& pieces, std::size_t indent) {
    std::string text;
    std::size_t at = indent;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::string piece = pieces[i] + (i + 1 < pieces.size() ? "," : "");
        if (i > 0 && at + 1 + piece.size() > kLineLength) {
            text += '\n' + std::string(indent, ' ');
            at = indent;
        } else if (i > 0) {
            text += ' ';
            ++at;
        }
        text += piece;
        at += piece.size();
    }
    return text;
}

bool IsNumber(const Report::Value& value) {
    return std::holds_alternative<std::int64_t>(value) || std::holds_alternative<double>(value);
}

// The width of each column but the last, which may run on.
std::vector<std::size_t> WidthsOf(const Report::Table& table) {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        std::size_t width = table.columns[i].size();
        for (const Report::Row& row : table.rows) {
            width = std::max(width, Wrapped(PiecesOf(row[i]), 0).size());
        }
        widths.push_back(width);
    }
    return widths;
}

void AppendLine(std::string& text, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
}

void AppendTable(std::string& text, const Report::Table& table) {
    const std::vector<std::size_t> widths = WidthsOf(table);
    const std::size_t last = widths.size() - 1;
    std::string header;
    for (std::size_t i = 0; i <= last; ++i) {
        const bool isNumber = !table.rows.empty() && IsNumber(table.rows.front()[i]);
        header += isNumber ? fmt::format("{:>{}}  ", table.columns[i], widths[i])
                           : fmt::format("{:<{}}  ", table.columns[i], widths[i]);
    }
    AppendLine(text, header);
    for (const Report::Row& row : table.rows) {
        std::string line;
        for (std::size_t i = 0; i <= last; ++i) {
            const Report::Texts pieces = PiecesOf(row[i]);
            if (i == last && !IsNumber(row[i])) {
                line += Wrapped(pieces, line.size());
            } else if (IsNumber(row[i])) {
                line += fmt::format("{:>{}}  ", pieces.front(), widths[i]);
            } else {
                line += fmt::format("{:<{}}  ", Wrapped(pieces, 0), widths[i]);
            }
        }
        AppendLine(text, line);
    }
}

// "display name" gives displayName.
std::string KeyOf(std::string_view name) {
    std::string key;
    bool atWord = false;
    for (const char c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) {
            atWord = true;
            continue;
        }
        key += atWord ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
        atWord = false;
    }
    return key;
}

void WriteText(Json& json, const std::string& text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteValue(Json& json, const Report::Value& value) {
    std::visit(
        [&json](const auto& held) {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, bool>) {
                json.Bool(held);
            } else if constexpr (std::is_same_v<T, std::int64_t>) {
                json.Int64(held);
            } else if constexpr (std::is_same_v<T, double>) {
                // JSON has no infinities.
                std::isfinite(held) ? json.Double(held) : json.Null();
            } else if constexpr (std::is_same_v<T, std::string>) {
                WriteText(json, held);
            } else {
                json.StartArray();
                for (const std::string& text : held) {
                    WriteText(json, text);
                }
                json.EndArray();
            }
        },
        value);
}

void WriteKey(Json& json, const std::string& name) {
    const std::string key = KeyOf(name);
    json.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

}  // namespace

std::string Report::ToText() const {
    std::size_t width = 0;
    for (const auto& [name, value] : fields_) {
        width = std::max(width, name.size());
    }
    std::string text;
    for (const auto& [name, value] : fields_) {
        const std::string label = fmt::format("{:<{}}", name + ':', width + 3);
        AppendLine(text, label + Wrapped(PiecesOf(value), label.size()));
    }
    for (const Table& table : tables_) {
        if (!text.empty()) {
            text += '\n';
        }
        if (tables_.size() > 1) {
            text += table.name + ":\n";
        }
        AppendTable(text, table);
    }
    return text;
}

std::string Report::ToJson() const {
    rapidjson::StringBuffer buffer;
    Json json(buffer);
    json.SetIndent(' ', 2);
    json.StartObject();
    for (const auto& [name, value] : fields_) {
        WriteKey(json, name);
        WriteValue(json, value);
    }
    for (const Table& table : tables_) {
        WriteKey(json, table.name);
        json.StartArray();
        for (const Row& row : table.rows) {
            json.StartObject();
            for (std::size_t i = 0; i < table.columns.size(); ++i) {
                WriteKey(json, table.columns[i]);
                WriteValue(json, row[i]);
            }
            json.EndObject();
        }
        json.EndArray();
    }
    json.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

void Report::Print(bool asJson) const { Tools::Print(asJson ? ToJson() : ToText()); }

}  // namespace Quenzo::Tools
