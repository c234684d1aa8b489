// Presets: any JSON is taken or refused, and what is taken answers all questions.

#include <fuzz/Require.h>

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/Exception.h>
#include <foundation/PropertySerializer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quenzo;
    using Conf::IPreset;
    SP<const IPreset> preset;
    try {
        Core::Property tree("preset");
        Core::PropertySerializer::Read(tree, Core::MemoryInput::Create({data, data + size}));
        preset = Conf::TreePreset::Create(tree);
    } catch (const Exception&) {
        return 0;
    }
    std::size_t known = 0;
    std::vector<std::uint32_t> indices;
    for (const std::string* type : {&IPreset::STREAM_TYPE_AUDIO, &IPreset::STREAM_TYPE_VIDEO,
                                    &IPreset::STREAM_TYPE_SUBTITLES_VIDEO, &IPreset::STREAM_TYPE_SUBTITLES_TEXT}) {
        preset->GetStreamIndices(*type, indices);
        known += indices.size();
    }
    Fuzz::Require(known <= preset->GetStreamCount(), "no stream is counted twice");
    Fuzz::Require(!(Conf::IsAudioOnlyPreset(preset) && Conf::IsVideoOnlyPreset(preset)), "audio or video, not both");
    for (const bool losslessToDvd : {false, true}) {
        try {
            Conf::ITranscodingMetaGraph::MakeOutFileDescription(preset, ioPath("out"), losslessToDvd);
        } catch (const Exception&) {
            // A preset may lack what an output needs.
        }
    }
    return 0;
}
