#include <Conf/Interfaces/GrahpImpl.h>

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/WrittenId.h>
#include <foundation/Exception.h>
#include <foundation/JsonReading.h>
#include <foundation/JsonStream.h>
#include <foundation/PropertyJson.h>
#include <foundation/PropertySerializer.h>
#include <foundation/Throw.h>
#include <foundation/TreeBuilder.h>

#include <fmt/compile.h>
#include <boost/container/deque.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Quenzo::Conf {

namespace {

using Core::JsonWriter;

// A tree stands inside the root object, an array of elements, the element and the object that names the tree.
constexpr int kTreeLevel = 5;

BadJson Malformed(const std::string& structure) {
    BadJson failure;
    failure << ProfileException::TagJsonBadStructure(structure);
    return failure;
}

// An id that a document gives: a number, which is 0 when there is none, or the text of a whole number that no id can
// be.
using GivenId = std::variant<long long, const std::string*>;

// The ids that an element may have: its own, and for a link those of its ends; DocumentReader::Member says which is
// where.
using GivenIds = std::array<GivenId, 3>;

// As much of a number as a message has room for.
std::string Shown(std::string_view number) {
    constexpr std::size_t most = 64;
    return number.size() <= most ? std::string(number) : std::string(number.substr(0, most)) + "...";
}

// A whole number that no id can be is refused: taken for another number it would join the wrong nodes.
long long ReadId(const GivenId& id, const char* name) {
    if (const auto* text = std::get_if<const std::string*>(&id)) {
        QUENZO_THROW(Malformed(fmt::format(FMT_COMPILE("The value of {} does not fit in 64 bits: {}"), name, **text)));
    }
    return std::get<long long>(id);
}

bool IsEmptyTree(const Core::Property& tree) {
    return tree.GetType() == PropertyTypes::None ||
           (tree.GetType() == PropertyTypes::Node && tree.GetName().empty() && tree.Count() == 0);
}

void WriteId(JsonWriter& writer, const char* name, long long id) {
    writer.Key(name);
    writer.Int64(id);
}

void WriteTree(JsonWriter& writer, const char* name, const Core::Property& tree, bool repeatsNames) {
    if (IsEmptyTree(tree)) {
        return;
    }
    writer.Key(name);
    writer.StartObject();
    Core::WriteKey(tree.GetName(), writer);
    Core::WriteContent(tree, repeatsNames, writer);
    writer.EndObject();
}

// Has the processor fetch the children of a tree that will be looked at soon; most trees keep them in one block. Put in
// place always, for the reason that GrahpImpl::FetchAhead gives.
[[gnu::always_inline]] inline void FetchChildren(const Core::Property& tree) noexcept {
    constexpr std::size_t kCacheLine = 64;
    constexpr std::size_t kMost = 8;
    if (const std::size_t count = std::min(tree.Count(), kMost); count != 0) {
        const auto first = reinterpret_cast<std::uintptr_t>(&*tree.begin());
        for (std::size_t at = 0; at < count * sizeof(Core::Property); at += kCacheLine) {
            // A number, because it may lie behind the block where no pointer may point.
            __builtin_prefetch(reinterpret_cast<const void*>(first + at));  // NOLINT(performance-no-int-to-ptr)
        }
    }
}

// Visits elements in their order. The children of their trees lie scattered in memory, so the processor is told of them
// some elements before, which takes a tenth off the time to save a large graph.
template <typename Elements, typename Visit>
void VisitAll(const Elements& elements, Visit visit) {
    constexpr int kAhead = 4;
    auto ahead = elements.begin();
    const auto fetch = [&ahead, end = elements.end()] {
        if (ahead != end) {
            FetchChildren(ahead->tree);
            ++ahead;
        }
    };
    for (int i = 0; i < kAhead; ++i) {
        fetch();
    }
    for (const auto& element : elements) {
        fetch();
        visit(element);
    }
}

}  // namespace

// Collects the nodes and links of a document from the events of a JSON parser. Of members of one name the first counts,
// and members without a meaning are passed over, whatever they hold.
class ITranscodingMetaGraph::GrahpImpl::DocumentReader {
public:
    // The members of an element that mean something, the ids first.
    enum Member : unsigned { Id, From, To, Data, Other };

    // A node or a link. An element that is no object counts as one without members.
    struct Element {
        Core::Property tree;
        GivenIds ids;
    };

    // Grows without moving what it holds, in blocks that a small document does not feel.
    using Elements =
        boost::container::deque<Element, void, boost::container::deque_options_t<boost::container::block_bytes<16384>>>;

    struct Section {
        bool isNamed = false;
        bool isArray = false;
        Elements elements;           // up to the first whose tree cannot be made
        std::exception_ptr failure;  // why it cannot be made

        void RequireAll() const {
            if (failure != nullptr) {
                std::rethrow_exception(failure);
            }
        }
    };

    bool IsObject() const noexcept { return isObject_; }
    Section& Vertices() noexcept { return vertices_; }
    Section& Edges() noexcept { return edges_; }

    void Null() {
        PassScalar([](Core::TreeBuilder& tree) { tree.Null(); });
    }
    void Bool(bool value) {
        PassScalar([value](Core::TreeBuilder& tree) { tree.Bool(value); });
    }
    void Int64(std::int64_t value) {
        SetId(value);
        PassScalar([value](Core::TreeBuilder& tree) { tree.Int64(value); });
    }
    void WrittenNumber(std::string_view number) {
        if (!IsAtId()) {
            return;
        }
        if (const std::optional<long long> id = Detail::ReadWrittenId(number)) {
            SetId(*id);
        } else {
            SetId(&noIds_.emplace_back(Shown(number)));
        }
    }
    void Uint64(std::uint64_t value) {
        PassScalar([value](Core::TreeBuilder& tree) { tree.Uint64(value); });
    }
    void Double(double value) {
        PassScalar([value](Core::TreeBuilder& tree) { tree.Double(value); });
    }
    void String(const char* text, std::size_t length, bool copy) {
        PassScalar([text, length, copy](Core::TreeBuilder& tree) { tree.String(text, length, copy); });
    }
    void Key(const char* text, std::size_t length, bool copy) {
        if (depth_ == kRoot) {
            BeginSection({text, length});
        } else if (section_ != nullptr && depth_ == kElement) {
            BeginMember({text, length});
        } else if (IsInTree()) {
            tree_.Key(text, length, copy);
        }
    }

    void StartObject() {
        isObject_ = isObject_ || depth_ == 0;
        if (IsInTree()) {
            tree_.StartObject();
        } else if (IsBetweenElements()) {
            BeginElement();
        }
        ++depth_;
    }
    void EndObject(std::size_t count) {
        --depth_;
        if (IsInTree()) {
            tree_.EndObject(count);
        } else if (IsBetweenElements()) {
            EndElement();
        }
    }
    void StartArray() {
        if (IsInTree()) {
            tree_.StartArray();
        } else if (IsBetweenElements()) {
            BeginElement();
        } else if (depth_ == kRoot && named_ != nullptr) {
            section_ = named_;
            section_->isArray = true;
        }
        ++depth_;
    }
    void EndArray(std::size_t count) {
        --depth_;
        if (IsInTree()) {
            tree_.EndArray(count);
        } else if (IsBetweenElements()) {
            EndElement();
        } else if (depth_ == kRoot) {
            section_ = nullptr;
        }
    }

private:
    // How many arrays and objects are open where the members of the root stand, the elements, and their members.
    static constexpr int kRoot = 1;
    static constexpr int kSection = 2;
    static constexpr int kElement = 3;

    bool IsInTree() const noexcept { return member_ == Data && depth_ >= kElement; }
    bool IsBetweenElements() const noexcept { return section_ != nullptr && depth_ == kSection; }

    template <typename Send>
    void PassScalar(Send send) {
        if (IsInTree()) {
            send(tree_);
        } else if (IsBetweenElements()) {
            BeginElement();
            EndElement();
        }
    }

    bool IsAtId() const noexcept { return depth_ == kElement && member_ < Data; }

    void SetId(GivenId id) {
        if (IsAtId()) {
            ids_[member_] = id;
        }
    }

    void BeginSection(std::string_view name) {
        Section* const section = name == VERTICES ? &vertices_ : name == EDGES ? &edges_ : nullptr;
        named_ = nullptr;
        if (section != nullptr && !section->isNamed) {
            section->isNamed = true;
            named_ = section;
        }
    }

    void BeginElement() {
        ids_ = {};
        seen_ = 0;
        member_ = Other;
    }

    void BeginMember(std::string_view name) {
        static constexpr std::array<std::string_view, 4> names = {ID, FROM, TO, DATA};
        const auto place = static_cast<unsigned>(std::find(names.begin(), names.end(), name) - names.begin());
        const unsigned bit = 1U << place;
        const bool counts = (seen_ & bit) == 0 && section_->failure == nullptr;
        member_ = counts ? static_cast<Member>(place) : Other;
        seen_ |= bit;
    }

    // The tree of an element is what its "data" names, or an empty node called "data" when it names nothing.
    void EndElement() {
        member_ = Other;
        if (section_->failure != nullptr) {
            return;
        }
        try {
            section_->elements.push_back({tree_.TakeFirstChild(), ids_});
        } catch (const Core::PropertyException&) {
            section_->failure = std::current_exception();
        }
    }

    Section vertices_;
    Section edges_;
    bool isObject_ = false;

    int depth_ = 0;
    Section* named_ = nullptr;    // whose value comes next
    Section* section_ = nullptr;  // whose array is open

    GivenIds ids_;
    std::list<std::string> noIds_;  // what the elements' ids point to
    unsigned seen_ = 0;             // a bit for each Member that the element has had
    Member member_ = Other;
    Core::TreeBuilder tree_{DATA};
};

void ITranscodingMetaGraph::GrahpImpl::Save(const SP<Core::IDataOutput>& output) const {
    // All that can be wrong with the trees is found before the first byte goes out.
    bool repeatsNames = false;
    const auto require = [&repeatsNames](const auto& element) {
        repeatsNames |= Core::RequireWritable(element.tree, kTreeLevel);
    };
    VisitAll(records_, require);
    VisitAll(edges_, require);
    Core::JsonQuenzoStreamOut stream(output);
    JsonWriter writer(stream);
    writer.StartObject();
    writer.Key(VERTICES);
    writer.StartArray();
    VisitAll(records_, [&, slot = slots_.begin()](const Record& record) mutable {
        writer.StartObject();
        WriteId(writer, ID, slot->id);
        WriteTree(writer, DATA, record.tree, repeatsNames);
        writer.EndObject();
        ++slot;
    });
    writer.EndArray();
    writer.Key(EDGES);
    writer.StartArray();
    VisitAll(edges_, [&](const Edge& edge) {
        writer.StartObject();
        WriteId(writer, ID, edge.id);
        WriteId(writer, FROM, IdOf(*edge.source));
        WriteId(writer, TO, IdOf(*edge.target));
        WriteTree(writer, DATA, edge.tree, repeatsNames);
        writer.EndObject();
    });
    writer.EndArray();
    writer.EndObject();
}

void ITranscodingMetaGraph::GrahpImpl::Load(const SP<Core::IDataInput>& input) {
    lastNodeId_ = 0;
    lastLinkId_ = 0;

    Core::JsonQuenzoStreamIn stream(input);
    DocumentReader document;
    const Core::JsonParsing outcome = Core::ParseJson(stream, document).outcome;
    if (outcome == Core::JsonParsing::TooDeep) {
        QUENZO_THROW(Malformed(fmt::format(FMT_COMPILE("The document is nested deeper than {} levels."),
                                           Core::PropertySerializer::MAX_DEPTH)));
    }
    if (outcome == Core::JsonParsing::SyntaxError || !document.IsObject()) {
        QUENZO_THROW(Malformed("The root node must be an object."));
    }
    auto& vertices = document.Vertices();
    auto& edges = document.Edges();
    if (!vertices.isArray || !edges.isArray) {
        QUENZO_THROW(
            Malformed(std::string("The root object must have two nested arrays named ") + VERTICES + " and " + EDGES));
    }
    ReserveMoreNodes(vertices.elements.size());
    for (auto& element : vertices.elements) {
        const NodeId id = ReadId(element.ids[DocumentReader::Id], ID);
        lastNodeId_ = std::max(lastNodeId_, id);
        AppendNode(id, std::move(element.tree));
    }
    vertices.RequireAll();
    LoadLinks(document);
    edges.RequireAll();
}

void ITranscodingMetaGraph::GrahpImpl::LoadLinks(DocumentReader& document) {
    for (auto& element : document.Edges().elements) {
        lastLinkId_ = std::max(lastLinkId_, ReadId(element.ids[DocumentReader::Id], ID));
        const NodeId from = ReadId(element.ids[DocumentReader::From], FROM);
        const NodeId to = ReadId(element.ids[DocumentReader::To], TO);
        Vertex& source = VertexById(from);
        Vertex& target = VertexById(to);
        AppendLink(source, target, std::move(element.tree));
    }
}

}  // namespace Quenzo::Conf
