// A module that uses the library, for a program that is not linked to it.

#include <tests/modules/Modules.h>

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/DataStream.h>

#include <string>

namespace {

using namespace Quenzo;
using namespace Quenzo::Conf;

bool JobSurvivesItsDocument() {
    const auto job = ITranscodingMetaGraph::Create();
    const auto source = job->AddNode(ITranscodingMetaGraph::MakeInFileDescription("clip.mov"));
    const auto video = IFormatCodecVideo::Create();
    video->SetFrameRate(25, 1);
    const auto stream = job->AddNode(video->Clone()->GetProperty());
    job->AddLink(source, stream, Core::Property("data"));
    const auto document = Core::MemoryOutput::Create();
    job->Save(document);
    const auto loaded = ITranscodingMetaGraph::Create();
    loaded->Load(Core::MemoryInput::Create(document->GetBytes()));
    return loaded->TopologyIsValid() && (*loaded)[stream] == video->GetProperty();
}

bool FailureIsCaught() {
    try {
        ITranscodingMetaGraph::Create()->RemoveNode(7);
    } catch (const NodeNotFound& failure) {
        return *boost::get_error_info<ProfileException::TagRequestedNodeId>(failure) == 7;
    }
    return false;
}

}  // namespace

int UseLibrary() {
    const bool areTablesThere = GetAllCodecIds().size() == 360 && GetExtensionsByFormat("mov").size() < 10 &&
                                IsVideoCodec("CODEC_ID_H264") && IFormatCodecVideo::TAG_WIDTH == "width";
    return (JobSurvivesItsDocument() ? 1 : 0) + (FailureIsCaught() ? 2 : 0) + (areTablesThere ? 4 : 0);
}

bool AskTheLog() { return UTI::FindFormatID("no.such.type").empty(); }

void WriteTheLog() {
    ITranscodingMetaGraph::MakeOutFileDescription(TreePreset::Create(Core::Property("preset")), "disc", true);
}
