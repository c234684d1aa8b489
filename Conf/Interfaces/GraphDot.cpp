#include <Conf/Interfaces/GrahpImpl.h>

#include <foundation/Property.h>

#include <locale>
#include <sstream>
#include <string>

namespace Quenzo::Conf {

namespace {

constexpr const char* kGraphName = "G";

bool HasLabel(const Core::Property& tree, const char* emptyName) {
    return tree.GetType() != PropertyTypes::Node || tree.Count() != 0 || tree.GetName() != emptyName;
}

}  // namespace

void ITranscodingMetaGraph::GrahpImpl::SaveInToDot(const SP<Core::IDataOutput>& output) const {
    // Positions and the graph's name are DOT identifiers as they stand, and a dump never ends a quoted string.
    std::ostringstream dot;
    // Else a program's locale may group the digits of numbers, and "1,000" is two nodes.
    dot.imbue(std::locale::classic());
    // Without this a stream whose memory runs out goes on without a word, and half a text would be written.
    dot.exceptions(std::ios::badbit);
    dot << "digraph " << kGraphName << " {\n";
    for (std::size_t position = 0; position < slots_.size(); ++position) {
        const Slot& slot = slots_[position];
        dot << position << "[label=\"Node Id: " << slot.id << '\n';
        Core::PrintCorePropertyValue(slot.record->tree, 0, dot, true, true);
        dot << "\"];\n";
    }
    for (const Edge& edge : edges_) {
        dot << edge.source->position << "->" << edge.target->position << ' ';
        if (HasLabel(edge.tree, DATA)) {
            dot << "[label=\"";
            Core::PrintCorePropertyValue(edge.tree, 0, dot, true, true);
            dot << "\"]";
        }
        dot << ";\n";
    }
    dot << "}\n";
    const std::string text = dot.str();
    output->Write(text.data(), text.size());
}

}  // namespace Quenzo::Conf
