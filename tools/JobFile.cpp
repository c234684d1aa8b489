#include <tools/JobFile.h>

#include <tools/Failure.h>
#include <tools/Files.h>
#include <tools/JsonText.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/DataStream.h>
#include <foundation/PropertySerializer.h>
#include <foundation/Throw.h>

#include <fmt/format.h>

#include <unistd.h>

#include <utility>

namespace Quenzo::Tools {

namespace {

using Conf::ITranscodingMetaGraph;
using Conf::ProfileException;

Failure Unusable(const std::string& file, const char* what, const std::string& reason) {
    return {ExitStatus::Unreadable, fmt::format("{} is no {}: {}", Quoted(file), what, reason)};
}

std::string Describe(const ProfileException& failure, const std::string& text) {
    if (const auto* structure = boost::get_error_info<ProfileException::TagJsonBadStructure>(failure)) {
        // A text that is no JSON is reported like one whose root is no object.
        const std::string syntax =
            *structure == "The root node must be an object." ? JsonSyntaxError(text) : std::string();
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

SP<const Conf::IPreset> LoadPreset(const std::string& file) {
    const std::string text = ReadWhole(file);
    try {
        Core::Property tree(Conf::IFormatCodec::TAG_PRESET);
        Core::PropertySerializer::Read(tree, Core::MemoryInput::Create(text));
        return Conf::TreePreset::Create(std::move(tree));
    } catch (const Exception& failure) {
        const std::string syntax = JsonSyntaxError(text);
        QUENZO_THROW(Unusable(file, "preset", syntax.empty() ? failure.what() : syntax));
    }
}

}  // namespace Quenzo::Tools
