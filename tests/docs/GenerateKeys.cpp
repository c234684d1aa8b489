// Prints the reference pages that follow from the rows of the vocabulary, as Markdown:
//
//     generate-keys keys             every key and word, by the class that owns it
//     generate-keys identifiers      every codec and container, and what the catalogues know of it

#include <tests/docs/VocabularyRows.h>

#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/TranslationUtils.h>

#include <algorithm>
#include <array>
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

// What a heading is called in a link.
std::string Anchor(std::string_view heading) {
    std::string anchor;
    for (const char c : heading) {
        if (c == ' ') {
            anchor += '-';
        } else if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return anchor;
}

void PrintContent(std::string_view heading, std::string_view about) {
    std::cout << "- [" << heading << "](#" << Anchor(heading) << "): " << about << '\n';
}

// The keys that have no constant. Their texts stand in the sources of their classes.
void PrintPrivateKeys() {
    std::cout << "\nSome keys have no constant, since only the functions of a class read and write them:\n";
    PrintHead({"key", "class", "stored", "meaning", "functions"});
    const std::string spherical = "`GetSphericalInfo`, `SetSphericalInfo`";
    PrintRow({"`PIXELFORMAT`", "IFormatCodecVideo", "Int64", "Pixel format, the number of a PixFmt; none when absent.",
              "`GetPixelFormat`, `SetPixelFormat`"});
    PrintRow({"`DISPLAYMATRIX`", "IFormatCodecVideo", "String",
              "Display matrix, its nine integers joined by colons; the default one when absent.",
              "`ExistsDisplayMatrix`, `GetDisplayMatrix`, `SetDisplayMatrix`"});
    PrintRow({"`SPHERICAL_INFO`", "IFormatCodecVideo", "Node",
              "Where a viewer of a 360-degree video looks at first; holds the three below.",
              "`SphericalInfoExist`, " + spherical});
    PrintRow({"`SPHERICAL_YAW`", "IFormatCodecVideo", "Int64", "The turn to the side; no unit is fixed.", spherical});
    PrintRow({"`SPHERICAL_PITCH`", "IFormatCodecVideo", "Int64", "The turn up or down; no unit is fixed.", spherical});
    PrintRow({"`SPHERICAL_ROLL`", "IFormatCodecVideo", "Int64", "The tilt; no unit is fixed.", spherical});
    PrintRow({"`QUENZO_SPECIFIC_METADATA`", "IFormatFile", "String",
              "The system's own metadata, a text that only it understands.",
              "`ExistsQuenzoSpecificMetadata`, `GetQuenzoSpecificMetadata`, `SetQuenzoSpecificMetadata`"});
}

void PrintKeyPage() {
    std::cout << kWarning
              << "# Keys and words\n\n"
                 "Every key of the property trees that has a constant, with that constant, the type stored under it "
                 "and its meaning, by\nthe class that owns the constant; then the words and numbers that are stored "
                 "under keys or name trees. Type Any:\nwhoever writes the key decides. The texts stand in documents "
                 "and never change. Codecs and containers have a page of\ntheir own, "
                 "[identifiers.md](identifiers.md).\n\n";
    for (const Owner& owner : Owners()) {
        PrintContent(owner.name, owner.about);
    }
    PrintPrivateKeys();
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

void PrintFormats(const Owner& owner, std::string_view title) {
    std::cout << "\n## " << title << "\n\nThe constants of " << owner.name
              << ". The class tells pictures, animations and raw photographs from all else, be it\nsound, text or "
                 "video. The first extension is the one that a new file gets.\n";
    PrintHead({"stored as", "constant", "class", "shown as", "extensions", "meaning"});
    for (const Row& row : RowsOf(owner, Kind::Format)) {
        PrintRow({Code(row.value), Code(row.constant), std::string(row.stored), FormatName(row), Extensions(row),
                  Cell(row.meaning)});
    }
}

struct Section {
    std::string_view owner;
    std::string_view title;
};

constexpr auto kIdentifierSections = std::to_array<Section>({
    {"IFormatFile", "Containers"},
    {"IFormatCodec", "Codecs of no kind of stream"},
    {"IFormatCodecVideo", "Video codecs"},
    {"IFormatCodecAudio", "Audio codecs"},
    {"IFormatCodecSubtitle", "Subtitle codecs"},
});

void PrintIdentifierPage() {
    std::cout
        << kWarning
        << "# Codecs and containers\n\n"
           "Every identifier that has a constant, with the name to show to people and its meaning. What is stored "
           "for a codec is\nthe constant's own name, except where it says otherwise.\n\n";
    for (const Section& section : kIdentifierSections) {
        PrintContent(section.title, "the constants of " + std::string(section.owner));
    }
    for (const Section& section : kIdentifierSections) {
        const auto owners = Owners();
        const auto owner = std::find_if(owners.begin(), owners.end(),
                                        [&section](const Owner& each) { return each.name == section.owner; });
        if (!RowsOf(*owner, Kind::Format).empty()) {
            PrintFormats(*owner, section.title);
        } else {
            PrintCodecs(*owner, section.title);
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
