#include <foundation/Property.h>

#include <foundation/Throw.h>

#include <fmt/compile.h>
#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace Quenzo::Core {

namespace {

// Most nodes fit into the first block, and a full description into two, so that a search by name is one short walk.
constexpr std::size_t kFirstChunk = 8;
constexpr std::size_t kNextChunk = 16;

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

// On their own, so that the look-ups, which seldom fail, have nothing to prepare for it.
[[noreturn, gnu::noinline]] void ThrowNoSuchChild(const Property& parent, const std::string& name) {
    QUENZO_THROW(
        NoSuchChild(parent, name, fmt::format(FMT_COMPILE("\"{}\" has no child \"{}\""), parent.GetName(), name)));
}

[[noreturn, gnu::noinline]] void ThrowNoSuchChild(const Property& parent, std::size_t index) {
    QUENZO_THROW(NoSuchChild(parent, std::to_string(index),
                             fmt::format(FMT_COMPILE("\"{}\" has no child at position {}: it has {}"), parent.GetName(),
                                         index, parent.Count())));
}

// Both texts have the size, which is at least that of a word: whether their first and their last words, which may
// overlap, are the same. The last are looked at first, for keys of one size often begin alike (color_primaries,
// color_transfer).
template <typename Word>
[[gnu::always_inline]] inline bool SameEnds(const char* one, const char* other, std::size_t size) {
    const auto same = [one, other](std::size_t at) {
        Word first;
        Word second;
        std::memcpy(&first, one + at, sizeof(Word));
        std::memcpy(&second, other + at, sizeof(Word));
        return first == second;
    };
    return same(size - sizeof(Word)) && same(0);
}

// Most texts are so short that their ends cover them, in less time than a call takes.
[[gnu::always_inline]] inline bool SameCharacters(const char* one, const char* other, std::size_t size) {
    if (size > 32) {
        return std::memcmp(one, other, size) == 0;
    }
    if (size > 16) {
        return SameEnds<std::uint64_t>(one + 8, other + 8, size - 8) && SameEnds<std::uint64_t>(one, other, size - 8);
    }
    if (size >= 8) {
        return SameEnds<std::uint64_t>(one, other, size);
    }
    if (size >= 4) {
        return SameEnds<std::uint32_t>(one, other, size);
    }
    return size == 0 || (SameEnds<char>(one, other, size) && one[size / 2] == other[size / 2]);
}

inline bool SameText(const std::string& one, const std::string& other) {
    return one.size() == other.size() && SameCharacters(one.data(), other.data(), one.size());
}

// The same, for a search, which is faster when its loop holds nothing but the comparison of sizes.
[[gnu::noinline]] bool SameName(const char* one, const char* other, std::size_t size) {
    return SameCharacters(one, other, size);
}

// Two trees, or two lists of children, that are walked side by side without recursion.
template <typename First, typename Second>
using PairStack = boost::container::small_vector<std::pair<First, Second>, 16>;

}  // namespace

inline Property::Property(ShallowCopy /*how*/, const Property& other) : name_(other.name_), value_(other.value_) {}

void Property::ChildList::CopyFrom(const ChildList& other) {
    PairStack<ChildList*, const ChildList*> pending;
    pending.emplace_back(this, &other);
    while (!pending.empty()) {
        const auto [target, source] = pending.back();
        pending.pop_back();
        target->Reserve(source->count);
        for (Chunk* chunk = source->first; chunk != nullptr; chunk = chunk->next) {
            for (const Property& child : std::span(chunk->Items(), chunk->used)) {
                Property& copy = target->EmplaceInRoom(ShallowCopy(), child);
                const ChildList* grandchildren = child.Children();
                if (grandchildren != nullptr && grandchildren->count != 0) {
                    pending.emplace_back(copy.Children(), grandchildren);
                }
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
Property& Property::ChildList::EmplaceInRoom(Arguments&&... arguments) {
    auto* child = new (last->Items() + last->used) Property(std::forward<Arguments>(arguments)...);
    ++last->used;
    ++count;
    return *child;
}

template <typename... Arguments>
Property& Property::ChildList::Emplace(Arguments&&... arguments) {
    if (last != nullptr && last->used != last->capacity) {
        return EmplaceInRoom(std::forward<Arguments>(arguments)...);
    }
    ChildList grown;
    grown.Reserve(count == 0 ? kFirstChunk : std::max(kNextChunk, count));
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

Property::Property(const Property& other) : Property(ShallowCopy(), other) {
    if (const ChildList* children = other.Children()) {
        Children()->CopyFrom(*children);
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

void Property::ThrowWrongType(const char* method) const {
    PropertyException failure;
    failure << Exception::TagDescription(
                   fmt::format(FMT_COMPILE("{} does not apply to \"{}\", which holds another type"), method, name_))
            << PropertyException::TagPropertyName(name_) << PropertyException::TagPropertyType(GetType())
            << PropertyException::TagMethodName(method);
    QUENZO_THROW(failure);
}

bool Property::ChildExists(const std::string& name) const noexcept { return FindChild(name) != end(); }

Property::iterator Property::FindChild(const std::string& name) noexcept {
    const char* const text = name.data();
    const std::size_t size = name.size();
    const ChildList* children = Children();
    for (Chunk* chunk = children != nullptr ? children->first : nullptr; chunk != nullptr; chunk = chunk->next) {
        const Property* const items = chunk->Items();
        const std::size_t used = chunk->used;
        // Not std::find_if: it goes by fours as well, but divides to know how many, which takes a tenth of a read.
#pragma GCC unroll 4
        for (std::size_t i = 0; i < used; ++i) {
            const std::string& each = items[i].name_;
            if (each.size() == size && SameName(each.data(), text, size)) {
                return {chunk, i};
            }
        }
    }
    return end();
}

Property::const_iterator Property::FindChild(const std::string& name) const noexcept {
    return const_cast<Property*>(this)->FindChild(name);
}

Property& Property::operator[](const std::string& name) {
    const iterator child = FindChild(name);
    if (child == end()) {
        ThrowNoSuchChild(*this, name);
    }
    return *child;
}

const Property& Property::operator[](const std::string& name) const { return const_cast<Property&>(*this)[name]; }

Property& Property::operator[](std::size_t index) {
    if (index >= Count()) {
        ThrowNoSuchChild(*this, index);
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

// For two values of one type: false when this is the type and they differ.
template <typename T>
bool Property::AreSame(const Property& other) const {
    const T* const value = std::get_if<T>(&value_);
    if constexpr (std::same_as<T, std::string>) {
        return value == nullptr || SameText(*value, *std::get_if<T>(&other.value_));
    } else {
        return value == nullptr || *value == *std::get_if<T>(&other.value_);
    }
}

bool Property::EqualsWithoutChildren(const Property& other) const {
    if (value_.index() != other.value_.index() || !SameText(name_, other.name_)) {
        return false;
    }
    return AreSame<std::string>(other) && AreSame<long long>(other) && AreSame<bool>(other) &&
           AreSame<boost::rational<long long>>(other) && Count() == other.Count();
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
