#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Exception.h>
#include <foundation/Export.h>
#include <foundation/JsonMemory.h>
#include <foundation/JsonStream.h>
#include <foundation/Property.h>

#include <rapidjson/encodings.h>
#include <rapidjson/writer.h>

#include <string>

namespace Quenzo::Core {

using JsonWriter = rapidjson::Writer<JsonQuenzoStreamOut, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory>;

/// A failure of a method that a property's content is to blame for.
PropertyException Unusable(const Property& property, const char* method, const std::string& description);

/// "nested deeper than 1000 levels"
std::string TooDeep();

/// Raises PropertyException when a tree cannot be written as a JSON value that stands at `level` of its document.
/// Returns whether any node of it has repeated names.
QUENZO_API bool RequireWritable(const Property& tree, int level);

/// True when two children of a node have the same name.
QUENZO_API bool HasRepeatedNames(const Property& node);

template <typename Handler>
void WriteString(const std::string& text, Handler& handler) {
    handler.String(text.data(), static_cast<rapidjson::SizeType>(text.size()), true);
}

template <typename Handler>
void WriteKey(const std::string& name, Handler& handler) {
    handler.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()), true);
}

/// Sends the content of a tree to a RapidJSON handler: a writer, or a document that is being filled. The tree has
/// passed RequireWritable, which also bounds the recursion; names are compared again only where it found some repeated.
template <typename Handler>
void WriteContent(const Property& tree, bool repeatsNames, Handler& handler) {
    switch (tree.GetType()) {
        case PropertyTypes::None: handler.Null(); return;
        case PropertyTypes::Bool: handler.Bool(tree.GetBool()); return;
        case PropertyTypes::Int64: handler.Int64(tree.GetInt64()); return;
        case PropertyTypes::Ratio:
            handler.StartArray();
            handler.Int64(tree.GetRatio().numerator());
            handler.Int64(tree.GetRatio().denominator());
            handler.EndArray(2);
            return;
        case PropertyTypes::String: WriteString(tree.GetString(), handler); return;
        case PropertyTypes::Node: break;
    }
    const auto count = static_cast<rapidjson::SizeType>(tree.Count());
    if (repeatsNames && HasRepeatedNames(tree)) {
        handler.StartArray();
        for (const Property& child : tree) {
            handler.StartObject();
            WriteKey(child.GetName(), handler);
            WriteContent(child, repeatsNames, handler);
            handler.EndObject(1);
        }
        handler.EndArray(count);
        return;
    }
    handler.StartObject();
    for (const Property& child : tree) {
        WriteKey(child.GetName(), handler);
        WriteContent(child, repeatsNames, handler);
    }
    handler.EndObject(count);
}

}  // namespace Quenzo::Core
