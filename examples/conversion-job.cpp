// Describes a conversion job, checks it, saves it, loads it back and compares:
//
//     conversion-job PRESET.json SOURCE TARGET JOB.json

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/PropertySerializer.h>

#include <cstdio>
#include <exception>

using Quenzo::Conf::ITranscodingMetaGraph;
using Quenzo::Core::Property;

int main(int argc, char** argv) try {
    if (argc != 5) {
        std::fprintf(stderr, "usage: conversion-job PRESET.json SOURCE TARGET JOB.json\n");
        return 2;
    }
    Property tree("preset");
    Quenzo::Core::PropertySerializer::Read(tree, Quenzo::Core::FileInput::Create(argv[1]));
    const auto preset = Quenzo::Conf::TreePreset::Create(tree);

    const Property& settings = preset->GetProperty()[preset->KEY_STREAMS];

    const auto job = ITranscodingMetaGraph::Create();
    const auto source = job->AddNode(ITranscodingMetaGraph::MakeInFileDescription(argv[2]));
    const auto video = job->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(0));
    const auto audio = job->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(1));
    const auto target = job->AddNode(ITranscodingMetaGraph::MakeOutFileDescription(preset, argv[3], false));
    job->AddLink(source, video, Property("data"));
    job->AddLink(source, audio, Property("data"));
    job->AddLink(video, target, settings["video"]);
    job->AddLink(audio, target, settings["audio"]);
    std::printf("described: source %lld -> streams %lld and %lld -> target %lld\n", source, video, audio, target);
    std::printf("checked:   %s\n", job->TopologyIsValid() ? "a valid job" : "not a valid job");

    const auto file = Quenzo::Core::FileOutput::Create(argv[4]);
    job->Save(file);
    file->Close();

    const auto loaded = ITranscodingMetaGraph::Create();
    loaded->Load(Quenzo::Core::FileInput::Create(argv[4]));
    bool isSame = loaded->GetNodesCount() == job->GetNodesCount();
    job->VisitNodes([&](auto node, const Property& data) { isSame = isSame && (*loaded)[node] == data; });
    job->VisitLinks(
        [&](auto, auto from, auto to, const Property& data) { isSame = isSame && loaded->GetLink(from, to) == data; });
    std::printf("saved:     %s; loaded back it is %s\n", argv[4], isSame ? "the same" : "another");
    return isSame ? 0 : 1;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "conversion-job: %s\n", failure.what());
    return 3;
}
