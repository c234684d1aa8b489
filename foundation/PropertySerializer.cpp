#include <foundation/PropertySerializer.h>

#include <foundation/JsonReading.h>
#include <foundation/NotNull.h>
#include <foundation/PropertyJson.h>
#include <foundation/Throw.h>
#include <foundation/TreeBuilder.h>

#include <fmt/compile.h>
#include <boost/container/small_vector.hpp>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quenzo::Core {

PropertyException Unusable(const Property& property, const char* method, const std::string& description) {
    PropertyException failure;
    failure << Exception::TagDescription(description) << PropertyException::TagPropertyName(property.GetName())
            << PropertyException::TagPropertyType(property.GetType()) << PropertyException::TagMethodName(method);
    return failure;
}

std::string TooDeep() {
    return fmt::format(FMT_COMPILE("nested deeper than {} levels"), PropertySerializer::MAX_DEPTH);
}

bool RequireWritable(const Property& tree, int level) {
    bool isRepeating = false;
    boost::container::small_vector<std::pair<const Property*, int>, 32> pending = {{&tree, level}};
    while (!pending.empty()) {
        const auto [property, depth] = pending.back();
        pending.pop_back();
        const PropertyTypes type = property->GetType();
        const bool isContainer = type == PropertyTypes::Node || type == PropertyTypes::Ratio;
        // The one-member objects of a list with repeated names are a level of their own.
        const bool repeatsNames = HasRepeatedNames(*property);
        isRepeating = isRepeating || repeatsNames;
        const int innermost = depth + (repeatsNames ? 1 : 0);
        if (isContainer && innermost > PropertySerializer::MAX_DEPTH) {
            QUENZO_THROW(
                Unusable(*property, "Save",
                         fmt::format(FMT_COMPILE("\"{}\" cannot be saved: it is {}"), property->GetName(), TooDeep())));
        }
        constexpr std::size_t longest = std::numeric_limits<rapidjson::SizeType>::max();
        if (property->GetName().size() > longest ||
            (type == PropertyTypes::String && property->GetString().size() > longest)) {
            QUENZO_THROW(Unusable(*property, "Save", "a text of 2^32 bytes or more cannot be saved"));
        }
        for (const Property& child : *property) {
            pending.emplace_back(&child, innermost + 1);
        }
    }
    return isRepeating;
}

bool HasRepeatedNames(const Property& node) {
    constexpr std::size_t few = 24;
    if (node.Count() <= few) {
        // One bit stands for many names, so that only a name whose bit is taken has to be searched.
        std::uint64_t taken = 0;
        for (auto child = node.begin(); child != node.end(); ++child) {
            const std::string& name = child->GetName();
            const auto last = name.empty() ? 0U : static_cast<unsigned char>(name.back());
            const std::uint64_t bit = std::uint64_t{1} << (name.size() + std::size_t{5} * last) % 64;
            if ((taken & bit) != 0 && node.FindChild(name) != child) {
                return true;
            }
            taken |= bit;
        }
        return false;
    }
    std::vector<std::string_view> names;
    names.reserve(node.Count());
    for (const Property& child : node) {
        names.push_back(child.GetName());
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

void PropertySerializer::Save(const Property& tree, rapidjson::Value& out,
                              rapidjson::Document::AllocatorType& allocator) {
    const bool repeatsNames = RequireWritable(tree, 1);
    // The value is the caller's kind, and the caller's allocator holds it; the stack beside them is ours.
    using Content = rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::Document::AllocatorType, JsonMemory>;
    Content content(&allocator);
    auto write = [&tree, repeatsNames](Content& target) {
        WriteContent(tree, repeatsNames, target);
        return true;
    };
    out = static_cast<rapidjson::Value&>(content.Populate(write));
}

void PropertySerializer::CoreLoad(Property& tree, const rapidjson::Value& in) {
    TreeBuilder builder(tree.GetName());
    in.Accept(builder);
    builder.MoveInto(tree);
}

void PropertySerializer::Write(const Property& tree, const SP<IDataOutput>& output) {
    JsonQuenzoStreamOut stream(Detail::NotNull(output, "output"));
    const bool repeatsNames = RequireWritable(tree, 1);
    JsonWriter writer(stream);
    WriteContent(tree, repeatsNames, writer);
}

void PropertySerializer::Read(Property& tree, const SP<IDataInput>& input) {
    JsonQuenzoStreamIn stream(Detail::NotNull(input, "input"));
    TreeBuilder builder(tree.GetName());
    const JsonParseResult result = ParseJson(stream, builder);
    if (result.outcome != JsonParsing::Done) {
        const std::string reason =
            result.outcome == JsonParsing::TooDeep ? TooDeep() : std::string(rapidjson::GetParseError_En(result.error));
        QUENZO_THROW(Unusable(tree, "Read", fmt::format(FMT_COMPILE("no JSON at byte {}: {}"), result.offset, reason)));
    }
    builder.MoveInto(tree);
}

}  // namespace Quenzo::Core
