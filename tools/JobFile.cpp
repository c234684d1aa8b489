#include <tools/JobFile.h>

#include <tools/Failure.h>
#include <tools/Files.h>
#include <tools/JsonText.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/IFormatFile.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/DataStream.h>
#include <foundation/PropertySerializer.h>
#include <foundation/Throw.h>

#include <fmt/format.h>

#include <unistd.h>

#include <utility>

namespace Quenzo::Tools {

namespace {

using Conf::IFormatFile;
using Conf::IPreset;
using Conf::ITranscodingMetaGraph;
using Conf::ProfileException;
using Core::Property;

Failure Unusable(const std::string& file, const char* what, const std::string& reason) {
    return {ExitStatus::Unreadable, fmt::format("{} is no {}: {}", Quoted(file), what, reason)};
}

std::string WhyNotJson(const std::string& text) {
    return HasByteOrderMark(text) ? "it begins with a byte order mark; save it as UTF-8 without one"
                                  : JsonSyntaxError(text);
}

std::string Describe(const ProfileException& failure, const std::string& text) {
    if (const auto* structure = boost::get_error_info<ProfileException::TagJsonBadStructure>(failure)) {
        // A text that is no JSON is reported like one whose root is no object.
        const std::string syntax = *structure == "The root node must be an object." ? WhyNotJson(text) : std::string();
        return syntax.empty() ? *structure : syntax;
    }
    if (const auto* node = boost::get_error_info<ProfileException::TagRequestedNodeId>(failure)) {
        return fmt::format("a link names node {}, which it does not have", *node);
    }
    if (const auto* link = boost::get_error_info<ProfileException::TagRequestedLink>(failure)) {
        return fmt::format("it has two links from node {} to node {}", link->first, link->second);
    }
    return failure.what();
}

// A setting of a stream that decides how a job is made.
struct Setting {
    const std::string& key;
    PropertyTypes type;
    const char* meaning;
};

// What is wrong with the settings of a stream, or nothing.
std::string FaultOfStream(const Property& stream) {
    using Conf::IFormatCodec;
    using Conf::IFormatCodecVideo;
    static const Setting settings[] = {
        {IFormatCodec::TAG_CODEC_ID, PropertyTypes::String, "a text"},
        {IFormatCodec::TAG_BITRATE_MODE, PropertyTypes::String, "a text"},
        {IFormatCodec::TAG_QUALITY, PropertyTypes::Int64, "a whole number"},
        {IFormatCodecVideo::TAG_WIDTH, PropertyTypes::Int64, "a whole number"},
        {IFormatCodecVideo::TAG_HEIGHT, PropertyTypes::Int64, "a whole number"},
        {IFormatCodecVideo::TAG_FPS, PropertyTypes::Ratio, "a fraction such as [30000,1001]"},
    };
    if (stream.GetType() != PropertyTypes::Node) {
        return fmt::format("its stream {} should be an object of settings", Quoted(stream.GetName()));
    }
    for (const Setting& setting : settings) {
        const auto value = stream.FindChild(setting.key);
        if (value != stream.end() && value->GetType() != setting.type) {
            return fmt::format("{} of its stream {} should be {}", Quoted(setting.key), Quoted(stream.GetName()),
                               setting.meaning);
        }
    }
    return {};
}

// What is wrong with a preset, or nothing.
std::string FaultOf(const IPreset& preset) {
    const Property& tree = preset.GetProperty();
    const auto streams = tree.FindChild(IPreset::KEY_STREAMS);
    if (streams == tree.end() || streams->Count() == 0) {
        return fmt::format("it has no member {} that is an object with a member for each stream",
                           Quoted(IPreset::KEY_STREAMS));
    }
    for (const Property& stream : *streams) {
        if (std::string fault = FaultOfStream(stream); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

}  // namespace

SP<ITranscodingMetaGraph> LoadJob(const std::string& file) {
    const std::string text = ReadWhole(file);
    auto job = ITranscodingMetaGraph::Create();
    try {
        job->Load(Core::MemoryInput::Create(text));
    } catch (const ProfileException& failure) {
        QUENZO_THROW(Unusable(file, "job document", Describe(failure, text)));
    } catch (const Exception& failure) {
        QUENZO_THROW(Unusable(file, "job document", failure.what()));
    }
    return job;
}

void PrintJob(const ITranscodingMetaGraph& job) {
    const auto document = Core::MemoryOutput::Create();
    job.Save(document);
    Print(isatty(STDOUT_FILENO) != 0 ? document->GetBytes() + '\n' : document->GetBytes());
}

SP<const IPreset> LoadPreset(const std::string& file) {
    const std::string text = ReadWhole(file);
    SP<const IPreset> preset;
    try {
        Property tree(Conf::IFormatCodec::TAG_PRESET);
        Core::PropertySerializer::Read(tree, Core::MemoryInput::Create(text));
        preset = Conf::TreePreset::Create(std::move(tree));
    } catch (const Exception& failure) {
        const std::string reason = WhyNotJson(text);
        QUENZO_THROW(Unusable(file, "preset", reason.empty() ? failure.what() : reason));
    }
    if (const std::string fault = FaultOf(*preset); !fault.empty()) {
        QUENZO_THROW(Unusable(file, "preset", fault));
    }
    return preset;
}

Property DescribeOutput(const SP<const IPreset>& preset, const std::string& path, bool losslessToDvd) {
    const Property& tree = preset->GetProperty();
    const auto container = tree.FindChild(IFormatFile::TAG_CONTAINER);
    const bool isNamed = container != tree.end() && container->GetType() == PropertyTypes::String;
    if (losslessToDvd && !isNamed) {
        Note(fmt::format("--dvd: the container is {}; the preset names none", Quoted(IFormatFile::FORMAT_DVD)));
    } else if (losslessToDvd && container->GetString() != IFormatFile::FORMAT_DVD) {
        Note(fmt::format("--dvd: the container is {} instead of {}", Quoted(IFormatFile::FORMAT_DVD),
                         Quoted(container->GetString())));
    }
    return ITranscodingMetaGraph::MakeOutFileDescription(preset, path, losslessToDvd);
}

void NoteThatItLeadsNowhere(const std::string& stream) {
    Note(stream + " leads nowhere: the preset has no place for it");
}

}  // namespace Quenzo::Tools
