// Prints the reference pages that follow from the rows of the vocabulary, as Markdown:
//
//     generate-keys keys             every key and word, by the class that owns it
//     generate-keys identifiers      every codec and container, and what the catalogues know of it

#include <tests/docs/VocabularyRows.h>

#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/TranslationUtils.h>

#include <algorithm>
#include <cctype>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Quenzo::Docs::Kind;
using Quenzo::Docs::Owner;
using Quenzo::Docs::Owners;
using Quenzo::Docs::Row;

constexpr std::string_view kWarning =
    "<!-- Made from Conf/Interfaces/Vocabulary by scripts/check-docs --fix. Change the rows there, not this page. "
    "-->\n";

// A text in a cell of a table, where a bar would end the cell and an angle bracket begin a tag.
std::string Cell(std::string_view text) {
    std::string cell;
    for (const char c : text) {
        switch (c) {
            case '|': cell += "\\|"; break;
            case '<': cell += "&lt;"; break;
            case '*': cell += "\\*"; break;
            default: cell += c;
        }
    }
    return cell;
}

// A text to be seen as it is stored.
std::string Code(std::string_view text) { return text.empty() ? "(empty)" : "`" + std::string(text) + "`"; }

void PrintRow(const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) {
        std::cout << "| " << cell << ' ';
    }
    std::cout << "|\n";
}

void PrintHead(const std::vector<std::string>& titles) {
    std::cout << '\n';
    PrintRow(titles);
    PrintRow(std::vector<std::string>(titles.size(), "---"));
}

std::vector<Row> RowsOf(const Owner& owner, Kind kind) {
    std::vector<Row> rows;
    std::copy_if(owner.rows.begin(), owner.rows.end(), std::back_inserter(rows),
                 [kind](const Row& row) { return row.kind == kind; });
    return rows;
}

std::string NumberText(std::string_view literal) {
    std::string text(literal);
    std::replace(text.begin(), text.end(), '\'', ' ');
    return text;
}

void PrintKeys(const Owner& owner) {
    const std::vector<Row> rows = RowsOf(owner, Kind::Key);
    if (rows.empty()) {
        return;
    }
    PrintHead({"key", "constant", "stored", "meaning"});
    for (const Row& row : rows) {
        PrintRow({Code(row.value), Code(row.constant), std::string(row.stored), Cell(row.meaning)});
    }
}

void PrintWords(const Owner& owner) {
    const std::vector<Row> words = RowsOf(owner, Kind::Word);
    if (!words.empty()) {
        PrintHead({"word", "constant", "meaning"});
    }
    for (const Row& row : words) {
        PrintRow({Code(row.value), Code(row.constant), Cell(row.meaning)});
    }
    const std::vector<Row> numbers = RowsOf(owner, Kind::Number);
    if (!numbers.empty()) {
        PrintHead({"number", "constant", "meaning"});
    }
    for (const Row& row : numbers) {
        PrintRow({NumberText(row.value), Code(row.constant), Cell(row.meaning)});
    }
}

void PrintKeyPage() {
    std::cout << kWarning
              << "# Keys and words\n\n"
                 "Every key of the property trees with the constant that names it, the type stored under it and its "
                 "meaning, by the\nclass that owns the constant; then the words and numbers that are stored under keys "
                 "or name trees. Type Any: whoever\nwrites the key decides. The texts stand in documents and never "
                 "change. Codecs and containers have a page of their own,\n[identifiers.md](identifiers.md).\n";
    for (const Owner& owner : Owners()) {
        std::cout << "\n## " << owner.name << "\n\nFor " << owner.about << ".\n";
        PrintKeys(owner);
        PrintWords(owner);
    }
}

std::string CodecName(const Row& row) {
    std::string name;
    return Quenzo::Conf::TranslateCodecId(std::string(row.value), name) ? Cell(name) : std::string();
}

std::string FormatName(const Row& row) {
    std::string name;
    return Quenzo::Conf::TranslateFormatId(std::string(row.value), name) ? Cell(name) : std::string();
}

std::string Extensions(const Row& row) {
    std::string text;
    for (const std::string& extension : Quenzo::Conf::GetExtensionsByFormat(std::string(row.value))) {
        text += (text.empty() ? "" : ", ") + extension;
    }
    return text;
}

void PrintCodecs(const Owner& owner, std::string_view title) {
    std::cout << "\n## " << title << "\n\nThe constants of " << owner.name << ".\n";
    PrintHead({"codec", "shown as", "meaning"});
    for (const Row& row : RowsOf(owner, Kind::Codec)) {
        std::string codec = Code(row.constant);
        codec += row.constant == row.value ? "" : ", stored as " + Code(row.value);
        codec += row.isListed ? "" : " (in no catalogue)";
        PrintRow({codec, CodecName(row), Cell(row.meaning)});
    }
}

void PrintFormats(const Owner& owner) {
    std::cout << "\n## Containers\n\nThe constants of " << owner.name
              << ". The first extension is the one that a new file gets.\n";
    PrintHead({"stored as", "constant", "class", "shown as", "extensions", "meaning"});
    for (const Row& row : RowsOf(owner, Kind::Format)) {
        PrintRow({Code(row.value), Code(row.constant), std::string(row.stored), FormatName(row), Extensions(row),
                  Cell(row.meaning)});
    }
}

void PrintIdentifierPage() {
    std::cout
        << kWarning
        << "# Codecs and containers\n\n"
           "Every identifier that has a constant, with the name to show to people and its meaning. What is stored "
           "for a codec is\nthe constant's own name, except where it says otherwise.\n";
    for (const Owner& owner : Owners()) {
        if (owner.name == "IFormatCodecVideo") {
            PrintCodecs(owner, "Video codecs");
        } else if (owner.name == "IFormatCodecAudio") {
            PrintCodecs(owner, "Audio codecs");
        } else if (owner.name == "IFormatCodecSubtitle") {
            PrintCodecs(owner, "Subtitle codecs");
        } else if (owner.name == "IFormatCodec") {
            PrintCodecs(owner, "Codecs of no kind of stream");
        } else if (owner.name == "IFormatFile") {
            PrintFormats(owner);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view page = argc == 2 ? argv[1] : "";
    if (page == "keys") {
        PrintKeyPage();
    } else if (page == "identifiers") {
        PrintIdentifierPage();
    } else {
        std::cerr << "usage: generate-keys keys|identifiers\n";
        return 2;
    }
    return 0;
}
