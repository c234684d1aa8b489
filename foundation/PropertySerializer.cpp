#include <foundation/PropertySerializer.h>

#include <foundation/Format.h>
#include <foundation/PropertyJson.h>
#include <foundation/StringUtils.h>
#include <foundation/Throw.h>

#include <boost/container/small_vector.hpp>
#include <boost/rational.hpp>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace Quenzo::Core {

namespace {

using JsonReader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory>;

// True when a number that no double can hold is too large, rather than too small, for one.
bool IsTooLarge(std::string_view number) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mark);
    const std::size_t firstDigit = number.find_first_of("123456789");
    std::string_view power = number.substr(std::min(mark + 1, number.size()));
    power.remove_prefix(power.starts_with('+') ? 1 : 0);
    long long exponent = 0;
    if (!power.empty() && !ToNumber(power, exponent)) {
        return power.front() != '-';
    }
    return exponent > static_cast<long long>(firstDigit) - static_cast<long long>(point);
}

// Passes a parser's events on to the document that they build, up to the depth limit. The limit has to act while the
// text is read: a document that was built too deep could not even be destroyed. Numbers arrive as they are written: the
// parser's own conversion overflows when a long fraction meets a large negative exponent.
class LimitedBuilder {
public:
    explicit LimitedBuilder(JsonDocument& target) : target_(target) {}

    bool IsTooDeep() const { return depth_ > PropertySerializer::MAX_DEPTH; }
    bool HasTooLargeNumber() const { return hasTooLargeNumber_; }

    bool Null() { return target_.Null(); }
    bool Bool(bool value) { return target_.Bool(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        const std::string_view number(text, length);
        std::int64_t integer = 0;
        if (ToNumber(number, integer)) {
            return target_.Int64(integer);
        }
        std::uint64_t large = 0;
        if (ToNumber(number, large)) {
            return target_.Uint64(large);
        }
        double value = 0;
        if (std::from_chars(text, text + length, value).ec == std::errc::result_out_of_range) {
            hasTooLargeNumber_ = IsTooLarge(number);
            value = 0;
        }
        return !hasTooLargeNumber_ && target_.Double(value);
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy) { return target_.String(text, length, copy); }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) { return target_.Key(text, length, copy); }
    bool StartObject() { return Descend() && target_.StartObject(); }
    bool StartArray() { return Descend() && target_.StartArray(); }
    bool EndObject(rapidjson::SizeType count) { return Ascend() && target_.EndObject(count); }
    bool EndArray(rapidjson::SizeType count) { return Ascend() && target_.EndArray(count); }

private:
    bool Descend() {
        ++depth_;
        return !IsTooDeep();
    }
    bool Ascend() {
        --depth_;
        return true;
    }

    // The parser's interface asks for these, and never calls them when it hands numbers over as they are written.
    friend JsonReader;
    bool Int(int /*value*/) { return false; }
    bool Uint(unsigned /*value*/) { return false; }
    bool Int64(std::int64_t /*value*/) { return false; }
    bool Uint64(std::uint64_t /*value*/) { return false; }
    bool Double(double /*value*/) { return false; }

    JsonDocument& target_;
    int depth_ = 0;
    bool hasTooLargeNumber_ = false;
};

PropertyException Unusable(const Property& property, const char* method, const std::string& description) {
    PropertyException failure;
    failure << Exception::TagDescription(description) << PropertyException::TagPropertyName(property.GetName())
            << PropertyException::TagPropertyType(property.GetType()) << PropertyException::TagMethodName(method);
    return failure;
}

std::string TooDeep() { return Detail::Format("nested deeper than {} levels", PropertySerializer::MAX_DEPTH); }

template <typename Value>
std::string_view Text(const Value& string) {
    return {string.GetString(), string.GetStringLength()};
}

// boost::rational overflows, or divides by zero, on its way to the lowest terms when a part is the smallest integer.
std::optional<boost::rational<long long>> MakeRatio(long long numerator, long long denominator) {
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<long long>::max());
    const auto magnitude = [](long long value) {
        return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    };
    if (denominator == 0) {
        return std::nullopt;
    }
    const bool isNegative = (numerator < 0) != (denominator < 0);
    const std::uint64_t divisor = std::gcd(magnitude(numerator), magnitude(denominator));
    const std::uint64_t top = magnitude(numerator) / divisor;
    const std::uint64_t bottom = magnitude(denominator) / divisor;
    if (bottom > largest || top > largest + (isNegative ? 1U : 0U)) {
        return std::nullopt;
    }
    return boost::rational<long long>(static_cast<long long>(isNegative ? 0 - top : top),
                                      static_cast<long long>(bottom));
}

template <typename Value>
bool IsRatio(const Value& array) {
    return array.Size() == 2 && array[0].IsNumber() && array[1].IsNumber();
}

template <typename Value>
bool IsChildList(const Value& array) {
    return !array.Empty() && std::all_of(array.Begin(), array.End(), [](const Value& element) {
        return element.IsObject() && element.MemberCount() == 1;
    });
}

template <typename Value>
std::string Describe(const Value& number) {
    if (number.IsUint64()) {
        return std::to_string(number.GetUint64());
    }
    std::string text = Detail::Format("{}", number.GetDouble());
    return text.find_first_of(".e") != std::string::npos ? text : text + ".0";
}

}  // namespace

// Fills trees from values of either kind of document.
class JsonLoader {
public:
    template <typename Value>
    static void Load(Property& tree, const Value& in) {
        if (in.IsNull()) {
            return;
        }
        Property loaded;
        loaded.name_ = tree.name_;
        Fill(loaded, in, 1);
        tree.value_ = std::move(loaded.value_);
    }

private:
    template <typename Value>
    static void Fill(Property& target, const Value& in, int level);

    template <typename Value>
    static void FillFromArray(Property& target, const Value& in, int level);

    static Property& AddChild(Property& parent, std::string_view name) {
        Property& child = parent.Add(Property());
        child.name_ = name;
        return child;
    }
};

template <typename Value>
void JsonLoader::Fill(Property& target, const Value& in, int level) {
    if (level > PropertySerializer::MAX_DEPTH && (in.IsObject() || in.IsArray())) {
        QUENZO_THROW(Unusable(target, "CoreLoad", Detail::Format("\"{}\" is {}", target.name_, TooDeep())));
    }
    switch (in.GetType()) {
        case rapidjson::kNullType: return;
        case rapidjson::kFalseType:
        case rapidjson::kTrueType: target = in.GetBool(); return;
        case rapidjson::kStringType: target.value_.emplace<std::string>(Text(in)); return;
        case rapidjson::kNumberType:
            if (!in.IsInt64()) {
                QUENZO_THROW(Unusable(
                    target, "CoreLoad",
                    Detail::Format("\"{}\" holds {}, which is no signed 64-bit integer", target.name_, Describe(in))));
            }
            target = in.GetInt64();
            return;
        case rapidjson::kArrayType: FillFromArray(target, in, level); return;
        case rapidjson::kObjectType: break;
    }
    target.value_.emplace<Property::ChildList>().Reserve(in.MemberCount());
    for (const auto& member : in.GetObject()) {
        Fill(AddChild(target, Text(member.name)), member.value, level + 1);
    }
}

template <typename Value>
void JsonLoader::FillFromArray(Property& target, const Value& in, int level) {
    if (IsRatio(in)) {
        const Value& top = in[0];
        const Value& bottom = in[1];
        const auto ratio =
            top.IsInt64() && bottom.IsInt64() ? MakeRatio(top.GetInt64(), bottom.GetInt64()) : std::nullopt;
        if (!ratio) {
            QUENZO_THROW(
                Unusable(target, "CoreLoad",
                         Detail::Format("\"{}\" holds [{},{}], which is no rational of signed 64-bit integers",
                                        target.name_, top.IsInt64() ? std::to_string(top.GetInt64()) : Describe(top),
                                        bottom.IsInt64() ? std::to_string(bottom.GetInt64()) : Describe(bottom))));
        }
        target = *ratio;
        return;
    }
    if (!IsChildList(in)) {
        QUENZO_THROW(
            Unusable(target, "CoreLoad",
                     Detail::Format("\"{}\" holds an array that is neither a rational [numerator,denominator] nor "
                                    "a list of one-member objects",
                                    target.name_)));
    }
    if (level >= PropertySerializer::MAX_DEPTH) {
        QUENZO_THROW(Unusable(target, "CoreLoad", Detail::Format("\"{}\" is {}", target.name_, TooDeep())));
    }
    target.value_.emplace<Property::ChildList>().Reserve(in.Size());
    for (const Value& element : in.GetArray()) {
        const auto member = element.MemberBegin();
        Fill(AddChild(target, Text(member->name)), member->value, level + 2);
    }
}

JsonParseResult ParseJson(JsonQuenzoStreamIn& stream, JsonDocument& document) {
    JsonReader reader;
    bool isTooDeep = false;
    bool hasTooLargeNumber = false;
    auto parse = [&](JsonDocument& target) {
        constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
        LimitedBuilder builder(target);
        const bool isDone = !reader.Parse<flags>(stream, builder).IsError();
        isTooDeep = builder.IsTooDeep();
        hasTooLargeNumber = builder.HasTooLargeNumber();
        return isDone;
    };
    document.SetNull();
    document.Populate(parse);
    const JsonParsing outcome = isTooDeep                ? JsonParsing::TooDeep
                                : reader.HasParseError() ? JsonParsing::SyntaxError
                                                         : JsonParsing::Done;
    const auto error = hasTooLargeNumber ? rapidjson::kParseErrorNumberTooBig : reader.GetParseErrorCode();
    return {outcome, error, reader.GetErrorOffset()};
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
            QUENZO_THROW(Unusable(*property, "Save",
                                  Detail::Format("\"{}\" cannot be saved: it is {}", property->GetName(), TooDeep())));
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

void PropertySerializer::CoreLoad(Property& tree, const rapidjson::Value& in) { JsonLoader::Load(tree, in); }

void LoadContent(Property& tree, const JsonValue& in) { JsonLoader::Load(tree, in); }

void PropertySerializer::Write(const Property& tree, const SP<IDataOutput>& output) {
    const bool repeatsNames = RequireWritable(tree, 1);
    JsonQuenzoStreamOut stream(output);
    JsonWriter writer(stream);
    WriteContent(tree, repeatsNames, writer);
}

void PropertySerializer::Read(Property& tree, const SP<IDataInput>& input) {
    JsonQuenzoStreamIn stream(input);
    JsonDocument document;
    const JsonParseResult result = ParseJson(stream, document);
    if (result.outcome != JsonParsing::Done) {
        const std::string reason =
            result.outcome == JsonParsing::TooDeep ? TooDeep() : std::string(rapidjson::GetParseError_En(result.error));
        QUENZO_THROW(Unusable(tree, "Read", Detail::Format("no JSON at byte {}: {}", result.offset, reason)));
    }
    LoadContent(tree, document);
}

}  // namespace Quenzo::Core
