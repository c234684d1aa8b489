#include <tools/JobCommands.h>

#include <tools/Dot.h>
#include <tools/Files.h>
#include <tools/JobDiff.h>
#include <tools/JobFile.h>
#include <tools/Report.h>

#include <Conf/Interfaces/GraphAlgorithms.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/DataStream.h>
#include <foundation/PropertySerializer.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <boost/algorithm/string/case_conv.hpp>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <utility>

namespace Quenzo::Tools {

namespace {

using Conf::ITranscodingMetaGraph;
using Conf::TopologyFault;
using Conf::TopologyFinding;
using Core::Property;
using NodeId = ITranscodingMetaGraph::NodeId;
using Json = rapidjson::Writer<rapidjson::StringBuffer>;

// The tree of a link that has nothing to say: drawings leave it out, and it is what a document without one loads as.
Property EmptyLink() { return Property("data"); }

template <typename Write>
void PrintJson(Write write) {
    rapidjson::StringBuffer text;
    Json json(text);
    json.StartObject();
    write(json);
    json.EndObject();
    Print(std::string(text.GetString(), text.GetSize()) + '\n');
}

void WriteIds(Json& json, const std::vector<NodeId>& ids) {
    json.StartArray();
    for (const NodeId id : ids) {
        json.Int64(id);
    }
    json.EndArray();
}

std::string Arrows(const std::vector<NodeId>& path) { return fmt::format("{}", fmt::join(path, " -> ")); }

std::string DescribeFinding(const TopologyFinding& finding) {
    const std::vector<NodeId>& first = finding.groups.front();
    switch (finding.fault) {
        case TopologyFault::TooFewNodes:
            return fmt::format("a job needs at least 2 nodes, and this has {}", first.size());
        case TopologyFault::IsolatedNode: return fmt::format("no link touches node {}", first.front());
        case TopologyFault::Cycle: return fmt::format("{} -> {}", Arrows(first), first.front());
        case TopologyFault::Disconnected: break;
    }
    std::string text = fmt::format("the job falls into {} pieces:", finding.groups.size());
    for (const std::vector<NodeId>& piece : finding.groups) {
        text += fmt::format(" [{}]", fmt::join(piece, " "));
    }
    return text;
}

void WriteFinding(Json& json, const TopologyFinding& finding) {
    json.StartObject();
    json.Key("code");
    json.String(Conf::GetTopologyFaultCode(finding.fault));
    if (finding.fault == TopologyFault::Disconnected) {
        json.Key("pieces");
        json.StartArray();
        for (const std::vector<NodeId>& piece : finding.groups) {
            WriteIds(json, piece);
        }
        json.EndArray();
    } else {
        json.Key("nodes");
        WriteIds(json, finding.groups.front());
    }
    json.EndObject();
}

void WriteTree(Json& json, const Property& tree) {
    rapidjson::Document content;
    Core::PropertySerializer::Save(tree, content, content.GetAllocator());
    json.Key("name");
    json.String(tree.GetName().data(), static_cast<rapidjson::SizeType>(tree.GetName().size()));
    json.Key("tree");
    content.Accept(json);
}

void PrintAsJson(const ITranscodingMetaGraph& job) {
    PrintJson([&job](Json& json) {
        json.Key("nodes");
        json.StartArray();
        job.VisitNodes([&json](NodeId node, const Property& tree) {
            json.StartObject();
            json.Key("id");
            json.Int64(node);
            WriteTree(json, tree);
            json.EndObject();
        });
        json.EndArray();
        json.Key("links");
        json.StartArray();
        job.VisitLinks([&json](ITranscodingMetaGraph::LinkId link, NodeId from, NodeId to, const Property& tree) {
            json.StartObject();
            json.Key("id");
            json.Int64(link);
            json.Key("from");
            json.Int64(from);
            json.Key("to");
            json.Int64(to);
            WriteTree(json, tree);
            json.EndObject();
        });
        json.EndArray();
    });
}

std::string NameOf(Difference::Change change) {
    switch (change) {
        case Difference::Change::Added: return "added";
        case Difference::Change::Removed: return "removed";
        case Difference::Change::Changed: return "changed";
    }
    return {};
}

// A line such as "~ node 2: streamRaw/id: 0 -> 1".
std::string DescribeDifference(const Difference& difference) {
    const std::string subject =
        difference.path.empty() ? difference.where : fmt::format("{}: {}", difference.where, difference.path);
    switch (difference.change) {
        case Difference::Change::Added: return fmt::format("+ {}: {}\n", subject, difference.after);
        case Difference::Change::Removed: return fmt::format("- {}: {}\n", subject, difference.before);
        case Difference::Change::Changed: break;
    }
    return fmt::format("~ {}: {} -> {}\n", subject, difference.before, difference.after);
}

NodeId RequireNode(const ITranscodingMetaGraph& job, const std::string& text, const std::string& file) {
    NodeId id = 0;
    if (!ToNumber(text, id)) {
        QUENZO_THROW(Failure(ExitStatus::WrongUsage, fmt::format("{} is no node id", Quoted(text))));
    }
    bool isPresent = false;
    job.VisitNodes([&](NodeId node, const Property& /*tree*/) { isPresent = isPresent || node == id; });
    if (!isPresent) {
        QUENZO_THROW(Failure(ExitStatus::No, fmt::format("{} has no node {}", Quoted(file), id)));
    }
    return id;
}

}  // namespace

ExitStatus MakeJob(const NewJob& job) {
    const auto preset = LoadPreset(job.presetFile);
    const Property& settings = preset->GetProperty()[Conf::IPreset::KEY_STREAMS];
    const auto graph = ITranscodingMetaGraph::Create();
    std::vector<std::pair<NodeId, std::string>> streams;
    for (const JobSource& source : job.sources) {
        const NodeId file = graph->AddNode(ITranscodingMetaGraph::MakeInFileDescription(source.path));
        for (const std::uint32_t index : source.streams) {
            const NodeId stream = graph->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(index));
            graph->AddLink(file, stream, EmptyLink());
            streams.emplace_back(stream, fmt::format("stream {} of {}", index, Quoted(source.path)));
        }
    }
    const NodeId output = graph->AddNode(DescribeOutput(preset, job.outputPath, job.losslessToDvd));
    for (std::size_t i = 0; i < streams.size(); ++i) {
        if (i < settings.Count()) {
            graph->AddLink(streams[i].first, output, settings[i]);
        } else {
            NoteThatItLeadsNowhere(streams[i].second);
        }
    }
    PrintJob(*graph);
    return ExitStatus::Done;
}

ExitStatus CheckJob(const std::string& file, bool asJson) {
    const auto job = LoadJob(file);
    const bool isValid = job->TopologyIsValid();
    const std::vector<TopologyFinding> findings = job->ExamineTopology();
    if (asJson) {
        PrintJson([&](Json& json) {
            json.Key("valid");
            json.Bool(isValid);
            json.Key("findings");
            json.StartArray();
            for (const TopologyFinding& finding : findings) {
                WriteFinding(json, finding);
            }
            json.EndArray();
        });
    } else if (isValid) {
        Print("valid\n");
    } else {
        std::string text = "not valid\n";
        for (const TopologyFinding& finding : findings) {
            text += fmt::format("{}: {}\n", Conf::GetTopologyFaultCode(finding.fault), DescribeFinding(finding));
        }
        Print(text);
    }
    return isValid ? ExitStatus::Done : ExitStatus::No;
}

ExitStatus ShowJob(const std::string& file, bool asJson) {
    const auto job = LoadJob(file);
    if (asJson) {
        PrintAsJson(*job);
        return ExitStatus::Done;
    }
    std::ostringstream text;
    text.exceptions(std::ios::badbit);
    job->VisitNodes([&text](NodeId node, const Property& tree) {
        text << "node " << node << '\n';
        Core::PrintCorePropertyValue(tree, 1, text, false, true);
    });
    job->VisitLinks([&text](ITranscodingMetaGraph::LinkId link, NodeId from, NodeId to, const Property& tree) {
        text << "link " << link << ": " << from << " -> " << to << '\n';
        if (tree != EmptyLink()) {
            Core::PrintCorePropertyValue(tree, 1, text, false, true);
        }
    });
    Print(text.str());
    return ExitStatus::Done;
}

ExitStatus DrawJob(const std::string& file, const std::string& picture, bool asJson) {
    const std::string ending = boost::algorithm::to_lower_copy(std::filesystem::path(picture).extension().string());
    const bool isPrinted = picture.empty() || picture == "-";
    const bool isText = isPrinted || ending == ".dot" || ending == ".gv";
    if (!isText && ending != ".svg" && ending != ".png") {
        QUENZO_THROW(
            Failure(ExitStatus::WrongUsage,
                    fmt::format("cannot draw {}: its name should end in .dot, .gv, .svg or .png", Quoted(picture))));
    }
    const auto job = LoadJob(file);
    const auto dot = Core::MemoryOutput::Create();
    job->SaveInToDot(dot);
    const std::string bytes = isText ? dot->GetBytes() : Draw(dot->GetBytes(), ending.substr(1));
    if (!isPrinted) {
        WriteWhole(picture, bytes);
    }
    if (asJson) {
        PrintJson([&](Json& json) {
            json.Key(isPrinted ? "dot" : "picture");
            const std::string& value = isPrinted ? bytes : picture;
            json.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
        });
    } else if (isPrinted) {
        Print(bytes);
    }
    return ExitStatus::Done;
}

ExitStatus FindJobPath(const std::string& file, const std::string& from, const std::string& to, bool asJson) {
    const auto job = LoadJob(file);
    const NodeId source = RequireNode(*job, from, file);
    const NodeId target = RequireNode(*job, to, file);
    const std::vector<NodeId> path = job->FindPath(source, target);
    if (asJson) {
        PrintJson([&](Json& json) {
            json.Key("reachable");
            json.Bool(!path.empty());
            json.Key("path");
            WriteIds(json, path);
        });
    } else if (path.empty()) {
        Print(fmt::format("no way from {} to {}\n", source, target));
    } else {
        Print(Arrows(path) + '\n');
    }
    return path.empty() ? ExitStatus::No : ExitStatus::Done;
}

ExitStatus DiffJobs(const std::string& before, const std::string& after, bool asJson) {
    if (before == "-" && after == "-") {
        QUENZO_THROW(Failure(ExitStatus::WrongUsage, "only one of the two jobs can come from standard input"));
    }
    // One after the other: of two files that cannot be read, the first is named.
    const auto old = LoadJob(before);
    const auto present = LoadJob(after);
    const std::vector<Difference> differences = CompareJobs(*old, *present);
    Report::Table table{"differences", {"change", "where", "path", "before", "after"}, {}};
    std::string text;
    for (const Difference& difference : differences) {
        table.rows.push_back(
            {NameOf(difference.change), difference.where, difference.path, difference.before, difference.after});
        text += DescribeDifference(difference);
    }
    if (asJson) {
        Report report;
        report.Add("same", differences.empty());
        report.Add(std::move(table));
        report.Print(asJson);
    } else {
        Print(text);
    }
    return differences.empty() ? ExitStatus::Done : ExitStatus::No;
}

}  // namespace Quenzo::Tools
