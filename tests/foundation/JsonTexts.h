#pragma once

// Trees to and from JSON texts in memory.

#include <foundation/DataStream.h>
#include <foundation/Property.h>
#include <foundation/PropertySerializer.h>

#include <string>

namespace Quenzo::Testing {

/// What PropertySerializer::Write makes of a tree.
inline std::string Written(const Core::Property& tree) {
    const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
    Core::PropertySerializer::Write(tree, output);
    return output->GetBytes();
}

/// Fills a tree with a JSON text.
inline void ReadInto(Core::Property& tree, const std::string& json) {
    Core::PropertySerializer::Read(tree, Core::MemoryInput::Create(json));
}

/// A property of type None with a name, as a loaded tree starts.
inline Core::Property Nothing(const std::string& name) {
    Core::Property parent("parent");
    return parent.SetChild(name, Core::Property());
}

/// What PropertySerializer::Read makes of a JSON text under that name.
inline Core::Property Loaded(const std::string& name, const std::string& json) {
    Core::Property tree = Nothing(name);
    ReadInto(tree, json);
    return tree;
}

}  // namespace Quenzo::Testing
