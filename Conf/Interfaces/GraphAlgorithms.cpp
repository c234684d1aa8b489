#include <Conf/Interfaces/GraphAlgorithms.h>

#include <foundation/Throw.h>

#include <stdexcept>

namespace Quenzo::Conf {

bool PathExistInGraph(const SP<const ITranscodingMetaGraph>& graph, long long from, long long to) {
    if (from == to) {
        return true;
    }
    if (graph == nullptr) {
        QUENZO_THROW(std::invalid_argument("graph is NULL"));
    }
    return !graph->FindPath(from, to).empty();
}

}  // namespace Quenzo::Conf
