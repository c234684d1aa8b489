// The JSON of property trees: what is read can be written, as a text and as values, and read again it is the same.

#include <fuzz/Require.h>

#include <foundation/Exception.h>
#include <foundation/PropertySerializer.h>

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quenzo;
    using Core::Property;
    Property tree("tree");
    try {
        Core::PropertySerializer::Read(tree, Core::MemoryInput::Create({data, data + size}));
    } catch (const Exception& failure) {
        Fuzz::Require(boost::get_error_info<Exception::TagDescription>(failure) != nullptr, "a failure says why");
        return 0;
    }
    const auto output = Core::MemoryOutput::Create();
    Core::PropertySerializer::Write(tree, output);
    Property again("tree");
    Core::PropertySerializer::Read(again, Core::MemoryInput::Create(output->GetBytes()));
    Fuzz::Require(tree == again, "what is read again equals what was written");
    rapidjson::Document document;
    Core::PropertySerializer::Save(tree, document, document.GetAllocator());
    Property loaded("tree");
    Core::PropertySerializer::CoreLoad(loaded, document);
    Fuzz::Require(tree == loaded, "what is loaded from values equals what was saved");
    Property copy = tree;
    Fuzz::Require(copy == tree, "a copy equals its source");
    if (copy.Count() > 0) {
        copy = Property(copy[0]);
    }
    std::ostringstream dump;
    Core::PrintCorePropertyValue(tree, 0, dump, true, true);
    return 0;
}
