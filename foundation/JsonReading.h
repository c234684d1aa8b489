#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Export.h>
#include <foundation/JsonMemory.h>
#include <foundation/JsonStream.h>
#include <foundation/PropertySerializer.h>
#include <foundation/StringUtils.h>

#include <rapidjson/encodings.h>
#include <rapidjson/error/error.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Quenzo::Core {

/// The nearest double to a JSON number, 0 when it is too small for one; nothing when it is too large.
QUENZO_API std::optional<double> NearestDouble(std::string_view number);

enum class JsonParsing { Done, SyntaxError, TooDeep };

struct JsonParseResult {
    JsonParsing outcome;
    rapidjson::ParseErrorCode error;  ///< for SyntaxError
    std::size_t offset;               ///< in bytes, where the parsing stopped
};

/// Passes a parser's events on, up to the depth limit. The limit has to act while the text is read, before anything is
/// built that deep. Numbers arrive as they are written: the parser's own conversion overflows when a long fraction
/// meets a large negative exponent.
template <typename Handler>
class LimitedEvents {
public:
    explicit LimitedEvents(Handler& target) : target_(target) {}

    bool IsTooDeep() const { return depth_ > PropertySerializer::MAX_DEPTH; }
    bool HasTooLargeNumber() const { return hasTooLargeNumber_; }

    bool Null() {
        target_.Null();
        return true;
    }
    bool Bool(bool value) {
        target_.Bool(value);
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/);
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        target_.String(text, length, copy);
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        target_.Key(text, length, copy);
        return true;
    }
    bool StartObject() {
        if (Descend()) {
            target_.StartObject();
        }
        return !IsTooDeep();
    }
    bool EndObject(rapidjson::SizeType count) {
        --depth_;
        target_.EndObject(count);
        return true;
    }
    bool StartArray() {
        if (Descend()) {
            target_.StartArray();
        }
        return !IsTooDeep();
    }
    bool EndArray(rapidjson::SizeType count) {
        --depth_;
        target_.EndArray(count);
        return true;
    }

    // The parser's interface asks for these, and never calls them when it hands numbers over as they are written.
    bool Int(int /*value*/) { return false; }
    bool Uint(unsigned /*value*/) { return false; }
    bool Int64(std::int64_t /*value*/) { return false; }
    bool Uint64(std::uint64_t /*value*/) { return false; }
    bool Double(double /*value*/) { return false; }

private:
    bool Descend() {
        ++depth_;
        return !IsTooDeep();
    }

    Handler& target_;
    int depth_ = 0;
    bool hasTooLargeNumber_ = false;
};

template <typename Handler>
bool LimitedEvents<Handler>::RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    const std::string_view number(text, length);
    std::int64_t integer = 0;
    std::uint64_t large = 0;
    if (ToNumber(number, integer)) {
        target_.Int64(integer);
        return true;
    }
    if constexpr (requires { target_.WrittenNumber(number); }) {
        target_.WrittenNumber(number);
    }
    if (ToNumber(number, large)) {
        target_.Uint64(large);
    } else if (const std::optional<double> value = NearestDouble(number)) {
        target_.Double(*value);
    } else {
        hasTooLargeNumber_ = true;
    }
    return !hasTooLargeNumber_;
}

/// Parses a whole stream without recursion, sends the events to a RapidJSON handler, and stops as soon as the text
/// nests deeper than PropertySerializer::MAX_DEPTH. What the handler answers is not heeded: that a text is no JSON is
/// said before what is wrong with its content. Numbers are sent as Int64 when they are written as integers of that
/// range, else as Uint64 or Double; before those a handler that has a member WrittenNumber is sent the text.
template <typename Handler>
JsonParseResult ParseJson(JsonQuenzoStreamIn& stream, Handler& handler) {
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    LimitedEvents<Handler> events(handler);
    reader.template Parse<flags>(stream, events);
    const JsonParsing outcome = events.IsTooDeep()       ? JsonParsing::TooDeep
                                : reader.HasParseError() ? JsonParsing::SyntaxError
                                                         : JsonParsing::Done;
    const auto error = events.HasTooLargeNumber() ? rapidjson::kParseErrorNumberTooBig : reader.GetParseErrorCode();
    return {outcome, error, reader.GetErrorOffset()};
}

}  // namespace Quenzo::Core
