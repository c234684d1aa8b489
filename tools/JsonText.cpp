#include <tools/JsonText.h>

#include <fmt/format.h>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace Quenzo::Tools {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

bool HasByteOrderMark(const std::string& text) { return text.starts_with(kByteOrderMark); }

std::string JsonSyntaxError(const std::string& text) {
    if (HasByteOrderMark(text)) {
        return JsonSyntaxError(text.substr(kByteOrderMark.size()));
    }
    rapidjson::StringStream stream(text.c_str());
    rapidjson::BaseReaderHandler<> ignore;
    rapidjson::Reader reader;
    if (!reader.Parse<rapidjson::kParseIterativeFlag>(stream, ignore).IsError()) {
        return {};
    }
    const auto offset = static_cast<std::ptrdiff_t>(std::min(reader.GetErrorOffset(), text.size()));
    const auto stop = text.begin() + offset;
    const auto lineFeeds = std::count(text.begin(), stop, '\n');
    const auto column =
        std::find(std::make_reverse_iterator(stop), text.rend(), '\n') - std::make_reverse_iterator(stop);
    return fmt::format("line {}, column {}: {}", lineFeeds + 1, column + 1,
                       rapidjson::GetParseError_En(reader.GetParseErrorCode()));
}

const rapidjson::Value* Members::Find(const char* name) const {
    if (value_ == nullptr) {
        return nullptr;
    }
    const auto member = value_->FindMember(name);
    return member != value_->MemberEnd() ? &member->value : nullptr;
}

std::optional<std::string> Members::Text(const char* name) const {
    const rapidjson::Value* const value = Find(name);
    return value != nullptr && value->IsString()
               ? std::optional<std::string>({value->GetString(), value->GetStringLength()})
               : std::nullopt;
}

Members Members::Object(const char* name) const {
    const rapidjson::Value* const value = Find(name);
    return value != nullptr ? Members(*value) : Members();
}

void Members::ForEach(const std::function<void(const std::string&, const std::string&)>& visit) const {
    if (value_ == nullptr) {
        return;
    }
    for (const auto& member : value_->GetObject()) {
        if (member.value.IsString()) {
            visit({member.name.GetString(), member.name.GetStringLength()},
                  {member.value.GetString(), member.value.GetStringLength()});
        }
    }
}

void Members::ForEachObject(const char* name, const std::function<void(const Members&)>& visit) const {
    const rapidjson::Value* const value = Find(name);
    if (value == nullptr || !value->IsArray()) {
        return;
    }
    for (const rapidjson::Value& element : value->GetArray()) {
        if (element.IsObject()) {
            visit(Members(element));
        }
    }
}

}  // namespace Quenzo::Tools
