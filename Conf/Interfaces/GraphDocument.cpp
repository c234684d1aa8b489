#include <Conf/Interfaces/GrahpImpl.h>

#include <Conf/Interfaces/Exceptions.h>
#include <foundation/Format.h>
#include <foundation/JsonStream.h>
#include <foundation/PropertyJson.h>
#include <foundation/PropertySerializer.h>
#include <foundation/Throw.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace Quenzo::Conf {

namespace {

using Core::JsonValue;
using Core::JsonWriter;

// A tree stands inside the root object, an array of elements, the element and the object that names the tree.
constexpr int kTreeLevel = 5;

BadJson Malformed(const std::string& structure) {
    BadJson failure;
    failure << ProfileException::TagJsonBadStructure(structure);
    return failure;
}

// The first member of that name; null when there is none, or when the value is no object.
const JsonValue* FindMember(const JsonValue& value, const char* name) {
    if (!value.IsObject()) {
        return nullptr;
    }
    const auto member = value.FindMember(name);
    return member != value.MemberEnd() ? &member->value : nullptr;
}

const JsonValue* FindArray(const JsonValue& object, const char* name) {
    const JsonValue* member = FindMember(object, name);
    return member != nullptr && member->IsArray() ? member : nullptr;
}

// An id that is absent, or present but no whole number, counts as 0. A whole number that no id can be is refused: taken
// for another number it would join the wrong nodes. Beyond the integers only floating-point numbers remain, among which
// -2^63 may stand for any of its neighbours.
long long ReadId(const JsonValue& element, const char* name) {
    const JsonValue* value = FindMember(element, name);
    if (value == nullptr || !value->IsNumber()) {
        return 0;
    }
    if (value->IsInt64()) {
        return value->GetInt64();
    }
    const double number = value->GetDouble();
    if (std::trunc(number) != number) {
        return 0;
    }
    constexpr double limit = 9223372036854775808.0;
    if (number <= -limit || number >= limit) {
        QUENZO_THROW(Malformed(Detail::Format("The value of {} does not fit in 64 bits: {:.0f}", name, number)));
    }
    return static_cast<long long>(number);
}

// The tree of an element: what its "data" names, or an empty node called "data" when it names nothing.
Core::Property ReadTree(const JsonValue& element, const char* name) {
    const JsonValue* data = FindMember(element, name);
    if (data != nullptr && data->IsObject() && data->MemberCount() == 1 && !data->MemberBegin()->value.IsNull()) {
        // What Save writes: it needs no wrapper to be taken out of.
        const auto& [treeName, content] = *data->MemberBegin();
        Core::Property tree{std::string(treeName.GetString(), treeName.GetStringLength())};
        Core::LoadContent(tree, content);
        return tree;
    }
    Core::Property wrapper{std::string(name)};
    if (data != nullptr) {
        Core::LoadContent(wrapper, *data);
    }
    return wrapper.Count() != 0 ? std::move(wrapper[0]) : wrapper;
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

}  // namespace

void ITranscodingMetaGraph::GrahpImpl::Save(const SP<Core::IDataOutput>& output) const {
    // All that can be wrong with the trees is found before the first byte goes out.
    bool repeatsNames = false;
    for (const Slot& slot : slots_) {
        repeatsNames |= Core::RequireWritable(slot.vertex->meta.data, kTreeLevel);
    }
    for (const Edge& edge : edges_) {
        repeatsNames |= Core::RequireWritable(edge.meta.data, kTreeLevel);
    }
    Core::JsonQuenzoStreamOut stream(output);
    JsonWriter writer(stream);
    writer.StartObject();
    writer.Key(VERTICES);
    writer.StartArray();
    for (const Slot& slot : slots_) {
        writer.StartObject();
        WriteId(writer, ID, slot.id);
        WriteTree(writer, DATA, slot.vertex->meta.data, repeatsNames);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key(EDGES);
    writer.StartArray();
    for (const Edge& edge : edges_) {
        writer.StartObject();
        WriteId(writer, ID, edge.meta.id);
        WriteId(writer, FROM, edge.source->meta.id);
        WriteId(writer, TO, edge.target->meta.id);
        WriteTree(writer, DATA, edge.meta.data, repeatsNames);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

void ITranscodingMetaGraph::GrahpImpl::Load(const SP<Core::IDataInput>& input) {
    lastNodeId_ = 0;
    lastLinkId_ = 0;

    Core::JsonQuenzoStreamIn stream(input);
    Core::JsonDocument document;
    if (Core::ParseJson(stream, document).outcome == Core::JsonParsing::TooDeep) {
        QUENZO_THROW(Malformed(
            Detail::Format("The document is nested deeper than {} levels.", Core::PropertySerializer::MAX_DEPTH)));
    }
    if (!document.IsObject()) {
        QUENZO_THROW(Malformed("The root node must be an object."));
    }
    const JsonValue* vertices = FindArray(document, VERTICES);
    const JsonValue* edges = FindArray(document, EDGES);
    if (vertices == nullptr || edges == nullptr) {
        QUENZO_THROW(
            Malformed(std::string("The root object must have two nested arrays named ") + VERTICES + " and " + EDGES));
    }
    slots_.reserve(slots_.size() + vertices->Size());
    for (const JsonValue& element : vertices->GetArray()) {
        Core::Property tree = ReadTree(element, DATA);
        const NodeId id = ReadId(element, ID);
        lastNodeId_ = std::max(lastNodeId_, id);
        AppendNode(id, std::move(tree));
    }
    const Finder find(*this);
    for (const JsonValue& element : edges->GetArray()) {
        Core::Property tree = ReadTree(element, DATA);
        lastLinkId_ = std::max(lastLinkId_, ReadId(element, ID));
        const NodeId from = ReadId(element, FROM);
        const NodeId to = ReadId(element, TO);
        Vertex& source = find(from);
        Vertex& target = find(to);
        AppendLink(source, target, std::move(tree));
    }
}

}  // namespace Quenzo::Conf
