#include <tools/DescribeCommand.h>

#include <tools/Files.h>
#include <tools/ProbeReader.h>

#include <foundation/PropertySerializer.h>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <sstream>

namespace Quenzo::Tools {

namespace {

using Json = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void WriteText(Json& json, const std::string& text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// The tree as a member: its name and its content.
void WriteTree(Json& json, const Core::Property& tree) {
    rapidjson::Document content;
    Core::PropertySerializer::Save(tree, content, content.GetAllocator());
    WriteText(json, tree.GetName());
    content.Accept(json);
}

std::string ToJson(const ProbedMedia& media) {
    rapidjson::StringBuffer buffer;
    Json json(buffer);
    json.SetIndent(' ', 2);
    json.StartObject();
    json.Key("file");
    json.StartObject();
    WriteTree(json, media.file->GetProperty());
    json.EndObject();
    json.Key("streams");
    json.StartArray();
    for (const ProbedStream& stream : media.streams) {
        json.StartObject();
        json.Key("index");
        json.Uint(stream.index);
        WriteTree(json, stream.description->GetProperty());
        json.EndObject();
    }
    json.EndArray();
    json.Key("notMapped");
    json.StartArray();
    for (const std::string& line : media.notMapped) {
        WriteText(json, line);
    }
    json.EndArray();
    json.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::string ToText(const ProbedMedia& media) {
    std::ostringstream text;
    text.exceptions(std::ios::badbit);
    text << "file\n";
    Core::PrintCorePropertyValue(media.file->GetProperty(), 1, text, false, true);
    for (const ProbedStream& stream : media.streams) {
        text << "stream " << stream.index << '\n';
        Core::PrintCorePropertyValue(stream.description->GetProperty(), 1, text, false, true);
    }
    if (!media.notMapped.empty()) {
        text << "not mapped\n";
    }
    for (const std::string& line : media.notMapped) {
        text << "  " << line << '\n';
    }
    return text.str();
}

}  // namespace

ExitStatus DescribeProbe(const std::string& file, bool asJson) {
    const ProbedMedia media = ReadProbe(ReadWhole(file), file);
    Print(asJson ? ToJson(media) : ToText(media));
    return ExitStatus::Done;
}

}  // namespace Quenzo::Tools
