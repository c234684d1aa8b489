#include <tools/ProbeReader.h>

#include <tools/Failure.h>
#include <tools/JsonText.h>
#include <tools/ProbeNames.h>
#include <tools/ProbeStreams.h>

#include <Conf/Interfaces/Stub.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <boost/algorithm/string/predicate.hpp>

#include <fmt/format.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace Quenzo::Tools {

namespace {

using Conf::IFormatFile;
using Core::Property;

[[noreturn]] void Refuse(const std::string& name, const std::string& reason) {
    QUENZO_THROW(Failure(ExitStatus::Unreadable,
                         fmt::format("{} is not what ffprobe prints as JSON: {}", Quoted(name), reason)));
}

// The key of a file that a tag is kept under, or null when it goes into the metadata. Some containers write tags in
// capitals.
const std::string* KeyOfTag(const std::string& tag) {
    const std::array<const std::string*, 17> tags = {
        &IFormatFile::TAG_ALBUM,         &IFormatFile::TAG_ALBUM_ARTIST, &IFormatFile::TAG_ARTIST,
        &IFormatFile::TAG_COMMENT,       &IFormatFile::TAG_COMPOSER,     &IFormatFile::TAG_COPYRIGHT,
        &IFormatFile::TAG_CREATION_TIME, &IFormatFile::TAG_DATE,         &IFormatFile::TAG_DISC,
        &IFormatFile::TAG_ENCODER,       &IFormatFile::TAG_ENCODED_BY,   &IFormatFile::TAG_GENRE,
        &IFormatFile::TAG_PERFORMER,     &IFormatFile::TAG_PUBLISHER,    &IFormatFile::TAG_TITLE,
        &IFormatFile::TAG_TRACK,         &IFormatFile::TAG_YEAR,
    };
    const auto* const found =
        std::find_if(tags.begin(), tags.end(), [&tag](const std::string* key) { return boost::iequals(*key, tag); });
    return found != tags.end() ? *found : nullptr;
}

// What follows from the streams or concerns the prober.
bool FollowsFromOthers(const std::string& member) {
    static constexpr std::string_view names[] = {"nb_streams", "nb_programs", "nb_stream_groups", "format_long_name",
                                                 "start_time", "duration",    "bit_rate",         "probe_score"};
    return std::find(std::begin(names), std::end(names), member) != std::end(names);
}

SP<IFormatFile> DescribeFile(const Members& format, NotMapped& notMapped) {
    SP<IFormatFile> file = IFormatFile::Create();
    Property tree = file->GetProperty();
    Property metadata = file->GetMetadata();
    const std::string fileName = format.Text("filename").value_or("");
    format.ForEach([&](const std::string& name, const std::string& value) {
        if (name == "filename") {
            tree.SetChildT<std::string>(IFormatFile::TAG_FILE_PATH, value);
        } else if (name == "format_name") {
            if (const auto container = ContainerOfProbe(value, fileName)) {
                tree.SetChildT<std::string>(IFormatFile::TAG_CONTAINER, *container);
            } else {
                notMapped.Add(name, value);
            }
        } else if (name == "size") {
            long long size = 0;
            if (ToNumber(value, size)) {
                tree.SetChildT<long long>(IFormatFile::TAG_FORMAT_FILE_SIZE, size);
            } else {
                notMapped.Add(name, value);
            }
        } else if (!FollowsFromOthers(name)) {
            notMapped.Add(name, value);
        }
    });
    format.Object("tags").ForEach([&](const std::string& name, const std::string& value) {
        const std::string* const key = KeyOfTag(name);
        (key != nullptr ? tree : metadata).SetChildT<std::string>(key != nullptr ? *key : name, value);
    });
    file->SetProperty(tree);
    file->SetMetadata(metadata);
    return file;
}

bool IsPicture(const IFormatFile& file) {
    const Property& tree = file.GetProperty();
    const auto container = tree.FindChild(IFormatFile::TAG_CONTAINER);
    return container != tree.end() && Conf::IsImageContainer(container->GetString(), Conf::AnimatedImages::Exclude);
}

}  // namespace

ProbedMedia ReadProbe(const std::string& text, const std::string& name) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        Refuse(name, JsonSyntaxError(text));
    }
    const Members root(document);
    if (!root.Has("streams") || !root.Has("format")) {
        Refuse(name, R"(it has no members "streams" and "format"; run ffprobe with -show_streams -show_format)");
    }
    ProbedMedia media;
    NotMapped ofFile(media.notMapped, "file");
    media.file = DescribeFile(root.Object("format"), ofFile);
    const bool isPicture = IsPicture(*media.file);
    std::uint32_t position = 0;
    root.ForEachObject("streams", [&](const Members& stream) {
        std::uint32_t index = position++;
        const std::string number = stream.Text("index").value_or("");
        if (!number.empty() && !ToNumber(number, index)) {
            Refuse(name, fmt::format("a stream has the index {}", number));
        }
        NotMapped ofStream(media.notMapped, fmt::format("stream {}", index));
        if (SP<Conf::IFormatCodec> description = DescribeStream(stream, {index, isPicture}, ofStream)) {
            media.streams.push_back({index, std::move(description)});
        }
    });
    root.ForEachObject("chapters", [&](const Members& chapter) {
        ofFile.Add("chapter", chapter.Object("tags").Text("title").value_or(chapter.Text("id").value_or("")));
    });
    return media;
}

}  // namespace Quenzo::Tools
