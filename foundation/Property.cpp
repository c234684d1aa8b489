#include <foundation/Property.h>

#include <foundation/Throw.h>

#include <boost/container/small_vector.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>

namespace Quenzo::Core {

namespace {

constexpr std::size_t kFirstChunk = 4;

constexpr std::array kTypes = {PropertyTypes::None,  PropertyTypes::Bool,   PropertyTypes::Int64,
                               PropertyTypes::Ratio, PropertyTypes::String, PropertyTypes::Node};

template <typename T>
struct SetterTexts;

// The recorded signature of a typed setter is part of the interface, so it cannot be left to each compiler's spelling.
#define QUENZO_SETTER_TEXTS(T)                                                                             \
    template <>                                                                                            \
    struct SetterTexts<T> {                                                                                \
        static constexpr const char* set =                                                                 \
            "Property &Quenzo::Core::Property::SetChildT(const std::string &, const T &) [T = " #T "]";    \
        static constexpr const char* create =                                                              \
            "Property &Quenzo::Core::Property::CreateChildT(const std::string &, const T &) [T = " #T "]"; \
    }

QUENZO_SETTER_TEXTS(long long);
QUENZO_SETTER_TEXTS(std::string);
QUENZO_SETTER_TEXTS(bool);
QUENZO_SETTER_TEXTS(boost::rational<long long>);

#undef QUENZO_SETTER_TEXTS

MethodIsNotApplicable NotANode(const Property& property, const char* method) {
    MethodIsNotApplicable failure;
    failure << PropertyException::TagPropertyName(property.GetName())
            << PropertyException::TagPropertyType(property.GetType()) << PropertyException::TagMethodName(method);
    return failure;
}

PropertyException NoSuchChild(const Property& parent, const std::string& child, const std::string& description) {
    PropertyException failure;
    failure << Exception::TagDescription(description) << PropertyException::TagPropertyName(child)
            << PropertyException::TagPropertyType(parent.GetType()) << PropertyException::TagMethodName("operator[]");
    return failure;
}

// Two trees, or two lists of children, that are walked side by side without recursion.
template <typename First, typename Second>
using PairStack = boost::container::small_vector<std::pair<First, Second>, 16>;

}  // namespace

Property::ChildList::ChildList(const ChildList& other) : ChildList() {
    PairStack<ChildList*, const ChildList*> pending;
    pending.emplace_back(this, &other);
    while (!pending.empty()) {
        const auto [target, source] = pending.back();
        pending.pop_back();
        target->Reserve(source->count);
        for (const_iterator child(source->first, 0); child != const_iterator(); ++child) {
            Property& copy = target->Emplace(ShallowCopy(), *child);
            const ChildList* grandchildren = child->Children();
            if (grandchildren != nullptr && grandchildren->count != 0) {
                pending.emplace_back(copy.Children(), grandchildren);
            }
        }
    }
}

Property::ChildList::ChildList(ChildList&& other) noexcept
    : first(std::exchange(other.first, nullptr)),
      last(std::exchange(other.last, nullptr)),
      count(std::exchange(other.count, 0)) {}

Property::ChildList& Property::ChildList::operator=(ChildList&& other) noexcept {
    ChildList taken(std::move(other));
    std::swap(first, taken.first);
    std::swap(last, taken.last);
    std::swap(count, taken.count);
    return *this;
}

Property::ChildList::~ChildList() {
    // Each grandchild list is hung behind the last chunk before its owner is destroyed, so that the depth of the tree
    // does not become the depth of the stack.
    while (first != nullptr) {
        for (std::size_t i = 0; i < first->used; ++i) {
            Property& child = first->Items()[i];
            if (ChildList* grandchildren = child.Children(); grandchildren != nullptr && grandchildren->count != 0) {
                last->next = grandchildren->first;
                last = grandchildren->last;
                grandchildren->first = nullptr;
            }
            std::destroy_at(&child);
        }
        ::operator delete(std::exchange(first, first->next));
    }
}

/// Makes room for `count` children in one block; for an empty list only.
void Property::ChildList::Reserve(std::size_t count_) {
    if (first == nullptr && count_ != 0) {
        void* memory = ::operator new(sizeof(Chunk) + count_ * sizeof(Property));
        first = last = new (memory) Chunk{nullptr, 0, count_};
    }
}

template <typename... Arguments>
Property& Property::ChildList::Emplace(Arguments&&... arguments) {
    if (last != nullptr && last->used != last->capacity) {
        auto* child = new (last->Items() + last->used) Property(std::forward<Arguments>(arguments)...);
        ++last->used;
        ++count;
        return *child;
    }
    ChildList grown;
    grown.Reserve(std::max(kFirstChunk, count));
    Property& child = grown.Emplace(std::forward<Arguments>(arguments)...);
    (last != nullptr ? last->next : first) = grown.first;
    last = grown.last;
    grown.first = nullptr;
    ++count;
    return child;
}

void Property::ChildList::Erase(iterator position) noexcept {
    Chunk* chunk = position.chunk_;
    Property* end = chunk->Items() + chunk->used;
    std::move(&*position + 1, end, &*position);
    std::destroy_at(end - 1);
    --count;
    if (--chunk->used != 0) {
        return;
    }
    Chunk* before = nullptr;
    for (Chunk* each = first; each != chunk; each = each->next) {
        before = each;
    }
    (before != nullptr ? before->next : first) = chunk->next;
    if (last == chunk) {
        last = before;
    }
    ::operator delete(chunk);
}

Property::Property(std::string name) : name_(std::move(name)), value_(ChildList()) {}

Property::Property(std::string name, std::string value) : name_(std::move(name)), value_(std::move(value)) {}

Property::Property(std::string name, const char* value) : Property(std::move(name), std::string(value)) {}

Property::Property(std::string name, const boost::rational<long long>& value) : name_(std::move(name)), value_(value) {}

Property::Property(const Property& other) = default;

Property::Property(ShallowCopy /*unused*/, const Property& other) : name_(other.name_) {
    if (other.Children() != nullptr) {
        value_.emplace<ChildList>();
    } else {
        std::visit(
            [this](const auto& value) {
                using T = std::decay_t<decltype(value)>;
                if constexpr (!std::same_as<T, ChildList>) {
                    value_.emplace<T>(value);
                }
            },
            other.value_);
    }
}

Property& Property::operator=(const Property& other) { return *this = Property(other); }

Property& Property::operator=(Property&& other) noexcept {
    // What is assigned may be a part of what is replaced: it is taken out before anything is destroyed.
    Property taken(std::move(other));
    name_.swap(taken.name_);
    value_.swap(taken.value_);
    return *this;
}

Property& Property::operator=(const std::string& value) {
    if (auto* text = std::get_if<std::string>(&value_)) {
        *text = value;
        return *this;
    }
    return *this = std::string(value);
}

Property& Property::operator=(std::string&& value) {
    std::string taken(std::move(value));
    value_ = std::move(taken);
    return *this;
}

Property& Property::operator=(const char* value) { return *this = std::string(value); }

Property& Property::operator=(const boost::rational<long long>& value) {
    value_ = value;
    return *this;
}

PropertyTypes Property::GetType() const noexcept { return kTypes[value_.index()]; }

template <typename T>
const T& Property::Get(const char* method) const {
    const T* value = std::get_if<T>(&value_);
    if (value == nullptr) {
        PropertyException failure;
        failure << Exception::TagDescription(
                       fmt::format("{} does not apply to \"{}\", which holds another type", method, name_))
                << PropertyException::TagPropertyName(name_) << PropertyException::TagPropertyType(GetType())
                << PropertyException::TagMethodName(method);
        QUENZO_THROW(failure);
    }
    return *value;
}

bool Property::GetBool() const { return Get<bool>("GetBool"); }

long long Property::GetInt64() const { return Get<long long>("GetInt64"); }

const std::string& Property::GetString() const { return Get<std::string>("GetString"); }

boost::rational<long long> Property::GetRatio() const { return Get<boost::rational<long long>>("GetRatio"); }

std::size_t Property::Count() const noexcept {
    const ChildList* children = Children();
    return children != nullptr ? children->count : 0;
}

bool Property::ChildExists(const std::string& name) const noexcept { return FindChild(name) != end(); }

Property::iterator Property::FindChild(const std::string& name) noexcept {
    iterator child = begin();
    while (child != end() && child->name_ != name) {
        ++child;
    }
    return child;
}

Property::const_iterator Property::FindChild(const std::string& name) const noexcept {
    return const_cast<Property*>(this)->FindChild(name);
}

Property& Property::operator[](const std::string& name) {
    const iterator child = FindChild(name);
    if (child == end()) {
        QUENZO_THROW(NoSuchChild(*this, name, fmt::format("\"{}\" has no child \"{}\"", name_, name)));
    }
    return *child;
}

const Property& Property::operator[](const std::string& name) const { return const_cast<Property&>(*this)[name]; }

Property& Property::operator[](std::size_t index) {
    if (index >= Count()) {
        QUENZO_THROW(NoSuchChild(*this, std::to_string(index),
                                 fmt::format("\"{}\" has no child at position {}: it has {}", name_, index, Count())));
    }
    Chunk* chunk = Children()->first;
    for (; index >= chunk->used; chunk = chunk->next) {
        index -= chunk->used;
    }
    return chunk->Items()[index];
}

const Property& Property::operator[](std::size_t index) const { return const_cast<Property&>(*this)[index]; }

Property::ChildList& Property::ChildrenFor(const char* method) {
    ChildList* children = Children();
    if (children == nullptr) {
        QUENZO_THROW(NotANode(*this, method));
    }
    return *children;
}

Property& Property::SetChild(const std::string& name) { return SetChild(name, Property(name)); }

Property& Property::SetChild(const std::string& name, const Property& value) {
    ChildList& children = ChildrenFor("SetChild");
    Property child(value);
    child.name_ = name;
    const iterator present = FindChild(name);
    return present != end() ? *present = std::move(child) : children.Emplace(std::move(child));
}

Property& Property::Add(Property&& child) { return ChildrenFor("Add").Emplace(std::move(child)); }

void Property::RemoveChild(const std::string& name) {
    if (const iterator child = FindChild(name); child != end()) {
        Children()->Erase(child);
    }
}

template <PropertyValue T>
Property& Property::SetChildT(const std::string& name, const T& value) {
    if (Children() == nullptr) {
        QUENZO_THROW_FROM(SetterTexts<T>::set, NotANode(*this, "SetChildT"));
    }
    const iterator child = FindChild(name);
    return child != end() ? *child = value : CreateChildT<T>(name, value);
}

template <PropertyValue T>
Property& Property::CreateChildT(const std::string& name, const T& value) {
    ChildList* children = Children();
    if (children == nullptr) {
        QUENZO_THROW_FROM(SetterTexts<T>::create, NotANode(*this, "CreateChildT"));
    }
    return children->Emplace(name, value);
}

bool Property::EqualsWithoutChildren(const Property& other) const {
    if (name_ != other.name_ || value_.index() != other.value_.index()) {
        return false;
    }
    return std::visit(
        [&other](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            const T& counterpart = *std::get_if<T>(&other.value_);
            if constexpr (std::same_as<T, ChildList>) {
                return value.count == counterpart.count;
            } else {
                return value == counterpart;
            }
        },
        value_);
}

bool Property::operator==(const Property& other) const {
    if (!EqualsWithoutChildren(other)) {
        return false;
    }
    PairStack<const Property*, const Property*> pending;
    pending.emplace_back(this, &other);
    while (!pending.empty()) {
        const auto [left, right] = pending.back();
        pending.pop_back();
        for (const_iterator i = left->begin(), j = right->begin(); i != left->end(); ++i, ++j) {
            if (!i->EqualsWithoutChildren(*j)) {
                return false;
            }
            if (i->Count() != 0) {
                pending.emplace_back(&*i, &*j);
            }
        }
    }
    return true;
}

template QUENZO_API Property& Property::SetChildT(const std::string&, const long long&);
template QUENZO_API Property& Property::SetChildT(const std::string&, const std::string&);
template QUENZO_API Property& Property::SetChildT(const std::string&, const bool&);
template QUENZO_API Property& Property::SetChildT(const std::string&, const boost::rational<long long>&);
template QUENZO_API Property& Property::CreateChildT(const std::string&, const long long&);
template QUENZO_API Property& Property::CreateChildT(const std::string&, const std::string&);
template QUENZO_API Property& Property::CreateChildT(const std::string&, const bool&);
template QUENZO_API Property& Property::CreateChildT(const std::string&, const boost::rational<long long>&);

}  // namespace Quenzo::Core
