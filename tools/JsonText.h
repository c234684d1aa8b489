#pragma once

#include <rapidjson/document.h>

#include <functional>
#include <optional>
#include <string>

namespace Quenzo::Tools {

/// True when a text begins with the byte order mark of UTF-8, which is no part of JSON.
bool HasByteOrderMark(const std::string& text);

/// Where a text stops being JSON and why, as a person counts: "line 2, column 5: ...". Empty when it is JSON. A byte
/// order mark is passed over.
std::string JsonSyntaxError(const std::string& text);

/// The members of a JSON object that somebody else wrote: whatever is missing or of another kind is as if it were not
/// there. The document must outlive it, and must have been parsed with numbers as texts.
class Members {
public:
    explicit Members(const rapidjson::Value& value) : value_(value.IsObject() ? &value : nullptr) {}

    bool Has(const char* name) const { return Find(name) != nullptr; }

    /// A string, or a number as it was written.
    std::optional<std::string> Text(const char* name) const;

    /// An object; an empty one when there is none.
    Members Object(const char* name) const;

    /// Visits the members that are texts, in their order.
    void ForEach(const std::function<void(const std::string& name, const std::string& value)>& visit) const;

    /// Visits the objects in an array, in their order.
    void ForEachObject(const char* name, const std::function<void(const Members&)>& visit) const;

private:
    Members() = default;
    const rapidjson::Value* Find(const char* name) const;

    const rapidjson::Value* value_ = nullptr;
};

}  // namespace Quenzo::Tools
