#include <foundation/TreeBuilder.h>

#include <foundation/PropertyJson.h>
#include <foundation/PropertySerializer.h>
#include <foundation/Throw.h>

#include <fmt/compile.h>
#include <boost/rational.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

namespace Quenzo::Core {

namespace {

// boost::rational overflows, or divides by zero, on its way to the lowest terms when a part is the smallest integer.
std::optional<boost::rational<long long>> LowestTerms(long long numerator, long long denominator) {
    constexpr long long smallest = std::numeric_limits<long long>::min();
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<long long>::max());
    if (denominator == 0) {
        return std::nullopt;
    }
    if (numerator != smallest && denominator != smallest) {
        return boost::rational<long long>(numerator, denominator);
    }
    const auto magnitude = [](long long value) {
        return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    };
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

// The shortest text that is read as the same number; one of at most sixteen digits before the point has no exponent.
std::string TextOf(double number) {
    const double size = std::abs(number);
    const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e16);
    std::array<char, 32> digits;
    char* const end = std::to_chars(digits.begin(), digits.end(), number,
                                    isPlain ? std::chars_format::fixed : std::chars_format::scientific)
                          .ptr;
    std::string text(digits.begin(), end);
    return text.find_first_of(".e") != std::string::npos ? text : text + ".0";
}

[[noreturn]] void Refuse(const Property& property, const std::string& description) {
    QUENZO_THROW(
        Unusable(property, "CoreLoad", fmt::format(FMT_COMPILE("\"{}\" {}"), property.GetName(), description)));
}

}  // namespace

TreeBuilder::TreeBuilder(std::string name) { properties_.emplace_back().name_ = std::move(name); }

void TreeBuilder::MoveInto(Property& target) {
    RequireSuccess();
    if (isNode_) {
        CollectChildren(1);
    }
    if (properties_.front().GetType() != PropertyTypes::None) {
        target.value_ = std::move(properties_.front().value_);
    }
    Reset();
}

Property TreeBuilder::TakeFirstChild() {
    RequireSuccess();
    if (properties_.size() > 1) {
        Property child = std::move(properties_[1]);
        Reset();
        return child;
    }
    Property node(properties_.front().GetName());
    MoveInto(node);
    return node;
}

bool TreeBuilder::Null() {
    return Attempt([this] { ForScalar(); });
}

bool TreeBuilder::Bool(bool value) {
    return Attempt([this, value] { ForScalar() = value; });
}

bool TreeBuilder::Int64(std::int64_t value) {
    return Attempt([this, value] {
        if (IsInArray()) {
            AddNumber({value, {}});
        } else {
            properties_.back() = value;
        }
    });
}

bool TreeBuilder::Uint64(std::uint64_t value) {
    return Attempt([this, value] { RefuseOrAdd(std::to_string(value)); });
}

bool TreeBuilder::Double(double value) {
    return Attempt([this, value] { RefuseOrAdd(TextOf(value)); });
}

bool TreeBuilder::String(const char* text, std::size_t length, bool /*copy*/) {
    return Attempt([this, text, length] { ForScalar().value_.emplace<std::string>(text, length); });
}

bool TreeBuilder::Key(const char* text, std::size_t length, bool /*copy*/) {
    return Attempt([this, text, length] {
        const Level& level = levels_.back();
        if (level.kind == Kind::OnlyChild && properties_.size() != level.children) {
            levels_.pop_back();
            RefuseArray();
        }
        properties_.emplace_back().name_.assign(text, length);
    });
}

bool TreeBuilder::StartObject() {
    return Attempt([this] {
        if (!IsInArray()) {
            Descend(Kind::Node);
            return;
        }
        if (levels_.back().kind == Kind::Ratio) {
            RefuseArray();
        }
        levels_.back().kind = Kind::List;
        Descend(Kind::OnlyChild);
    });
}

bool TreeBuilder::EndObject(std::size_t /*count*/) {
    return Attempt([this] {
        const Level level = levels_.back();
        levels_.pop_back();
        if (level.kind == Kind::Node) {
            Close(level);
        } else if (properties_.size() == level.children) {
            RefuseArray();
        }
    });
}

bool TreeBuilder::StartArray() {
    return Attempt([this] {
        if (IsInArray()) {
            RefuseArray();
        }
        Descend(Kind::Array);
    });
}

bool TreeBuilder::EndArray(std::size_t /*count*/) {
    return Attempt([this] {
        const Level level = levels_.back();
        if (level.kind == Kind::Array || (level.kind == Kind::Ratio && numbers_.size() != 2)) {
            RefuseArray();
        }
        levels_.pop_back();
        if (level.kind == Kind::List) {
            Close(level);
        } else {
            SetRatio(properties_.back());
            numbers_.clear();
        }
    });
}

template <typename Event>
bool TreeBuilder::Attempt(Event event) {
    if (failure_ != nullptr) {
        return false;
    }
    try {
        event();
    } catch (const PropertyException&) {
        failure_ = std::current_exception();
    }
    return failure_ == nullptr;
}

void TreeBuilder::Reset() {
    failure_ = nullptr;
    levels_.clear();
    numbers_.clear();
    isNode_ = false;
    properties_.resize(1);
    properties_.front().value_ = {};
}

void TreeBuilder::RequireSuccess() {
    if (const std::exception_ptr failure = failure_) {
        Reset();
        std::rethrow_exception(failure);
    }
}

bool TreeBuilder::IsInArray() const noexcept {
    if (levels_.empty()) {
        return false;
    }
    const Kind kind = levels_.back().kind;
    return kind != Kind::Node && kind != Kind::OnlyChild;
}

Property& TreeBuilder::ForScalar() {
    if (IsInArray()) {
        RefuseArray();
    }
    return properties_.back();
}

void TreeBuilder::AddNumber(Number number) {
    if (levels_.back().kind == Kind::List || numbers_.size() == 2) {
        RefuseArray();
    }
    levels_.back().kind = Kind::Ratio;
    numbers_.push_back(std::move(number));
}

void TreeBuilder::RefuseOrAdd(std::string number) {
    if (!IsInArray()) {
        Refuse(properties_.back(), fmt::format(FMT_COMPILE("holds {}, which is no signed 64-bit integer"), number));
    }
    AddNumber({0, std::move(number)});
}

void TreeBuilder::Descend(Kind kind) {
    if (levels_.size() == static_cast<std::size_t>(PropertySerializer::MAX_DEPTH)) {
        Refuse(properties_.back(), "is " + TooDeep());
    }
    levels_.push_back({kind, properties_.size()});
}

void TreeBuilder::Close(const Level& level) {
    if (levels_.empty()) {
        isNode_ = true;
    } else {
        CollectChildren(level.children);
    }
}

void TreeBuilder::CollectChildren(std::size_t first) {
    Property& node = properties_[first - 1];
    node.value_.emplace<Property::ChildList>().Reserve(properties_.size() - first);
    const auto begin = properties_.begin() + static_cast<std::ptrdiff_t>(first);
    for (auto child = begin; child != properties_.end(); ++child) {
        node.Add(std::move(*child));
    }
    properties_.erase(begin, properties_.end());
}

void TreeBuilder::SetRatio(Property& target) const {
    const Number& top = numbers_[0];
    const Number& bottom = numbers_[1];
    const auto ratio =
        top.text.empty() && bottom.text.empty() ? LowestTerms(top.integer, bottom.integer) : std::nullopt;
    if (!ratio) {
        Refuse(target, fmt::format(FMT_COMPILE("holds [{},{}], which is no rational of signed 64-bit integers"),
                                   top.Text(), bottom.Text()));
    }
    target = *ratio;
}

void TreeBuilder::RefuseArray() const {
    Refuse(properties_[levels_.back().children - 1],
           "holds an array that is neither a rational [numerator,denominator] nor a list of one-member objects");
}

}  // namespace Quenzo::Core
