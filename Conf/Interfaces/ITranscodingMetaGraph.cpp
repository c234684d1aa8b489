#include <Conf/Interfaces/ITranscodingMetaGraph.h>

#include <Conf/Interfaces/GrahpImpl.h>
#include <Conf/Interfaces/Log.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <foundation/NotNull.h>
#include <foundation/Throw.h>

#include <stdexcept>
#include <string>

namespace Quenzo::Conf {

SP<ITranscodingMetaGraph> ITranscodingMetaGraph::Create() {
    return SP<ITranscodingMetaGraph>(new ITranscodingMetaGraph());
}

ITranscodingMetaGraph::ITranscodingMetaGraph() : impl_(std::make_unique<GrahpImpl>()) {}

ITranscodingMetaGraph::~ITranscodingMetaGraph() = default;

void ITranscodingMetaGraph::AddRef() const { counter_.AddRefImpl(); }

long ITranscodingMetaGraph::GetRefCount() const { return counter_.GetRefCountImpl(); }

long ITranscodingMetaGraph::Release() const {
    const long remaining = counter_.ReleaseImpl();
    if (remaining == 0) {
        delete this;
    }
    return remaining;
}

auto ITranscodingMetaGraph::AddNode(const Core::Property& tree) -> NodeId { return impl_->AddNode(tree); }

void ITranscodingMetaGraph::RemoveNode(NodeId node) { impl_->RemoveNode(node); }

auto ITranscodingMetaGraph::AddLink(NodeId from, NodeId to, const Core::Property& tree) -> LinkId {
    return impl_->AddLink(from, to, tree);
}

void ITranscodingMetaGraph::RemoveLink(NodeId from, NodeId to) { impl_->RemoveLink(from, to); }

Core::Property ITranscodingMetaGraph::operator[](NodeId node) const { return impl_->GetNode(node); }

Core::Property ITranscodingMetaGraph::GetLink(NodeId from, NodeId to) const { return impl_->GetLink(from, to); }

void ITranscodingMetaGraph::Inputs(NodeId node, std::vector<NodeId>& sources) const { impl_->Inputs(node, sources); }

void ITranscodingMetaGraph::Outputs(NodeId node, std::vector<NodeId>& targets) const { impl_->Outputs(node, targets); }

void ITranscodingMetaGraph::Inputs(std::vector<NodeId>& nodes) const { impl_->Inputs(nodes); }

void ITranscodingMetaGraph::Outputs(std::vector<NodeId>& nodes) const { impl_->Outputs(nodes); }

long long ITranscodingMetaGraph::GetNodesCount() const { return impl_->GetNodesCount(); }

void ITranscodingMetaGraph::VisitNodes(const std::function<void(NodeId, const Core::Property&)>& visit) const {
    impl_->VisitNodes(visit);
}

void ITranscodingMetaGraph::VisitLinks(
    const std::function<void(LinkId, NodeId, NodeId, const Core::Property&)>& visit) const {
    impl_->VisitLinks(visit);
}

bool ITranscodingMetaGraph::TopologyIsValid() const { return impl_->TopologyIsValid(); }

std::vector<TopologyFinding> ITranscodingMetaGraph::ExamineTopology() const { return impl_->ExamineTopology(); }

auto ITranscodingMetaGraph::FindPath(NodeId from, NodeId to) const -> std::vector<NodeId> {
    return impl_->FindPath(from, to);
}

void ITranscodingMetaGraph::Load(SP<Core::IDataInput> input) { impl_->Load(Detail::NotNull(input, "input")); }

void ITranscodingMetaGraph::Save(SP<Core::IDataOutput> output) const { impl_->Save(Detail::NotNull(output, "output")); }

void ITranscodingMetaGraph::SaveInToDot(SP<Core::IDataOutput> output) const {
    impl_->SaveInToDot(Detail::NotNull(output, "output"));
}

Core::Property ITranscodingMetaGraph::GetControlledBy(unsigned int index) {
    Core::Property tree(CONTROLLED_BY);
    tree.SetChildT<long long>(CONTROLLED_BY, index);
    return tree;
}

Core::Property ITranscodingMetaGraph::MakeInFileDescription(const ioPath& path) {
    Core::Property tree(KEY_SOURCE);
    tree.SetChildT<std::string>(IPreset::KEY_TYPE_ID, KEY_SOURCE_TYPE_FILE);
    tree.SetChildT<std::string>(KEY_FILEPATH, path.utf8string());
    return tree;
}

Core::Property ITranscodingMetaGraph::MakeOutFileDescription(const SP<const IPreset>& preset, const ioPath& path,
                                                             bool losslessToDvd) {
    if (preset == nullptr) {
        QUENZO_THROW(std::invalid_argument("preset is NULL"));
    }
    Core::Property tree = preset->GetProperty();
    tree.RemoveChild(IPreset::KEY_STREAMS);
    tree.SetChildT<std::string>(KEY_FILEPATH, path.utf8string());
    if (losslessToDvd) {
        Detail::Log().inform(__FILE__, __LINE__, "Replacing output format for lossless conversion to DVD");
        tree.SetChildT<std::string>(FileVocabulary::TAG_CONTAINER, FileVocabulary::FORMAT_DVD);
    }
    return tree;
}

Core::Property ITranscodingMetaGraph::MakeRawStreamDescription(unsigned int id) {
    Core::Property tree(KEY_STREAM_RAW);
    tree.SetChildT<long long>(KEY_STREAM_RAW_ID, id);
    return tree;
}

void ITranscodingMetaGraph::AddSlaveStreamIndex(Core::Property& master, const Core::Property& settings,
                                                unsigned int slaveIndex) {
    Core::Property entry{std::string()};
    entry.SetChildT<long long>(MERGE_WITH, slaveIndex);
    entry.SetChild(MERGE_SETTINGS, settings);
    if (const auto list = master.FindChild(MERGE_WITH); list != master.end()) {
        list->Add(std::move(entry));
        return;
    }
    // A list without an element is never left behind.
    Core::Property list(MERGE_WITH);
    list.Add(std::move(entry));
    master.SetChild(MERGE_WITH, list);
}

}  // namespace Quenzo::Conf
