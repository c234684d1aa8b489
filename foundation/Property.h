#pragma once

#include <foundation/Export.h>
#include <foundation/PropertyTypes.h>

#include <boost/rational.hpp>

#include <array>
#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <iterator>
#include <string>
#include <utility>
#include <variant>

namespace Quenzo::Core {

/// The value types of the typed child setters.
template <typename T>
concept PropertyValue = std::same_as<T, long long> || std::same_as<T, std::string> || std::same_as<T, bool> ||
    std::same_as<T, boost::rational<long long>>;

/// An integer of any width and sign; a property holds it as long long. Values of 2^63 and above wrap around.
template <typename T>
concept PropertyInteger = std::integral<T> && !std::same_as<T, bool>;

class TreeBuilder;

/// One node of a tree of named, typed values.
///
/// A property has a name and holds either one value (a leaf), or named children in order (a node), or nothing (type
/// None, as default-constructed). Copies are deep: a copy and its source never see each other's changes.
///
/// Adding a child never moves its siblings, so a reference to a child stays valid while others are added. Removing a
/// child may move those after it. A property may be assigned from a part of itself; it must not be moved into its own
/// descendant. A moved-from property may be assigned to or destroyed; what it holds is not specified.
///
/// When memory runs out, std::bad_alloc is raised, and the property and all arguments are as they were. Removing,
/// moving and finding take no memory, nor does comparing, unless more than sixteen nodes with children are found before
/// any of them has been looked into.
///
/// Trees of any depth can be copied, compared, printed and destroyed without using up the stack. A property is not
/// locked: use one tree on one thread at a time.
class QUENZO_API Property {
    struct QUENZO_LOCAL Chunk;

    template <bool IsConst>
    class ChildIterator;

public:
    /// Walk the children in order. They stay valid while children are added; removing a child makes the iterators to it
    /// and to those after it invalid.
    using iterator = ChildIterator<false>;
    using const_iterator = ChildIterator<true>;

    /// No name and no value: type None.
    Property() = default;

    /// A node without children.
    explicit Property(std::string name);

    /// A leaf with that value. Text is never taken for a boolean; a character pointer must not be null.
    Property(std::string name, std::string value);
    Property(std::string name, const char* value);
    Property(std::string name, std::nullptr_t) = delete;
    Property(std::string name, const boost::rational<long long>& value);

    /// A leaf that holds true or false; nothing else turns into one.
    template <std::same_as<bool> B>
    Property(std::string name, B value) : name_(std::move(name)), value_(value) {}

    /// A leaf that holds an integer.
    template <PropertyInteger I>
    Property(std::string name, I value) : name_(std::move(name)), value_(static_cast<long long>(value)) {}

    /// Copies the whole tree, or takes it over.
    Property(const Property& other);
    Property(Property&& other) noexcept = default;

    /// Replace the whole tree, its name included.
    Property& operator=(const Property& other);
    Property& operator=(Property&& other) noexcept;

    ~Property() = default;

    /// Replace the value and set the type to match. The name and the place among the siblings stay; children are
    /// dropped.
    Property& operator=(const std::string& value);
    Property& operator=(std::string&& value);
    Property& operator=(const char* value);
    Property& operator=(std::nullptr_t) = delete;
    Property& operator=(const boost::rational<long long>& value);

    /// The same for true and false.
    template <std::same_as<bool> B>
    Property& operator=(B value) {
        value_ = value;
        return *this;
    }

    /// The same for integers.
    template <PropertyInteger I>
    Property& operator=(I value) {
        value_ = static_cast<long long>(value);
        return *this;
    }

    /// The name; fixed once the property is made, except that assigning a whole tree brings its own.
    const std::string& GetName() const noexcept { return name_; }

    /// What it holds.
    PropertyTypes GetType() const noexcept { return kTypes[value_.index()]; }

    /// The value. Each raises PropertyException when the property is of another type; nothing is converted.
    bool GetBool() const { return Get<bool>("GetBool"); }
    long long GetInt64() const { return Get<long long>("GetInt64"); }
    const std::string& GetString() const { return Get<std::string>("GetString"); }
    boost::rational<long long> GetRatio() const { return Get<boost::rational<long long>>("GetRatio"); }

    /// The number of direct children; 0 for a leaf.
    std::size_t Count() const noexcept {
        const ChildList* children = Children();
        return children != nullptr ? children->count : 0;
    }

    /// The direct children in their order; none for a leaf.
    iterator begin() noexcept;
    iterator end() noexcept;
    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;

    /// True when a direct child has that name.
    bool ChildExists(const std::string& name) const noexcept;

    /// The first direct child of that name, or end() when there is none.
    iterator FindChild(const std::string& name) noexcept;
    const_iterator FindChild(const std::string& name) const noexcept;

    /// The first direct child of that name. Raises PropertyException when there is none; a read never creates a child.
    Property& operator[](const std::string& name);
    const Property& operator[](const std::string& name) const;

    /// The direct child at that position, counted from 0. Raises PropertyException when there are fewer.
    Property& operator[](std::size_t index);
    const Property& operator[](std::size_t index) const;

    /// Makes the child of that name an empty node: appended, or in the place of the first child of that name.
    /// Raises MethodIsNotApplicable when this is not a node. Returns the child.
    Property& SetChild(const std::string& name);

    /// Stores a copy of a tree as the child of that name, whatever the tree's own name is: appended, or in the place of
    /// the first child of that name. Raises MethodIsNotApplicable when this is not a node. Returns the child.
    Property& SetChild(const std::string& name, const Property& value);

    /// Appends a child under its own name, beside any other of that name. Raises MethodIsNotApplicable when this is not
    /// a node, and then leaves the argument as it was. Returns the child.
    Property& Add(Property&& child);

    /// Removes the first direct child of that name; does nothing when there is none.
    void RemoveChild(const std::string& name);

    /// Sets the value of the first child of that name, which keeps its place and takes the new type, or appends such a
    /// child. Raises MethodIsNotApplicable when this is not a node. Returns the child.
    template <PropertyValue T>
    Property& SetChildT(const std::string& name, const T& value);

    /// Appends a child with that value, even when there is one of that name already. Raises MethodIsNotApplicable when
    /// this is not a node. Returns the child.
    template <PropertyValue T>
    Property& CreateChildT(const std::string& name, const T& value);

    /// Equal names, types and values, and equal children in equal order.
    bool operator==(const Property& other) const;

private:
    struct ShallowCopy {};

    // Keeps the children in blocks that are never reallocated: that is what holds references to siblings valid.
    class ChildList {
    public:
        ChildList() = default;

        // Makes an empty list, so that the copy of a value goes down one level only; CopyFrom brings the children.
        ChildList(const ChildList& /*other*/) noexcept {}

        ChildList(ChildList&& other) noexcept;
        ChildList& operator=(const ChildList& other) = delete;
        ChildList& operator=(ChildList&& other) noexcept;
        ~ChildList();

        /// Copies the children, and theirs to any depth, into an empty list; each list takes one block.
        void CopyFrom(const ChildList& other);

        void Reserve(std::size_t count);

        template <typename... Arguments>
        Property& Emplace(Arguments&&... arguments);

        // The same, for a list whose last block is known to have room.
        template <typename... Arguments>
        Property& EmplaceInRoom(Arguments&&... arguments);

        void Erase(iterator position) noexcept;

        Chunk* first = nullptr;
        Chunk* last = nullptr;
        std::size_t count = 0;
    };

    // In the order of PropertyTypes, whose number 5 is not used.
    using Value = std::variant<std::monostate, bool, long long, boost::rational<long long>, std::string, ChildList>;
    static constexpr std::array kTypes = {PropertyTypes::None,  PropertyTypes::Bool,   PropertyTypes::Int64,
                                          PropertyTypes::Ratio, PropertyTypes::String, PropertyTypes::Node};

    // Copies a leaf whole, and of a node the name alone.
    Property(ShallowCopy how, const Property& other);

    const ChildList* Children() const noexcept { return std::get_if<ChildList>(&value_); }
    ChildList* Children() noexcept { return std::get_if<ChildList>(&value_); }

    ChildList& ChildrenFor(const char* method);
    bool EqualsWithoutChildren(const Property& other) const;

    // Out of line, so that the getters stay small enough to be put in place.
    [[noreturn]] void ThrowWrongType(const char* method) const;

    template <typename T>
    const T& Get(const char* method) const {
        const T* value = std::get_if<T>(&value_);
        if (value == nullptr) {
            ThrowWrongType(method);
        }
        return *value;
    }

    template <typename T>
    bool AreSame(const Property& other) const;

    friend class TreeBuilder;

    std::string name_;
    Value value_;
};

/// Writes a readable dump of a tree: one line per property with its name and, for a leaf, ": " and its value. `indent`
/// is the level of the first line, two blanks each (below 0 counts as 0). `withTypes` adds the type in brackets after
/// the name; `withChildren` descends into the children. Backslashes, double quotes, control characters, bytes that are
/// no UTF-8 text and an "&" before a "#" are written as C escapes, so that a dump can stand inside a quoted DOT string
/// and be drawn. A stream that fails says so in its own way: by its state, or by throwing when it is told to.
QUENZO_API void PrintCorePropertyValue(const Property& property, int indent, std::ostream& os, bool withTypes,
                                       bool withChildren);

struct QUENZO_LOCAL Property::Chunk {
    Chunk* next;
    std::size_t used;
    std::size_t capacity;

    Property* Items() noexcept { return reinterpret_cast<Property*>(this + 1); }
};

/// A forward iterator over children.
template <bool IsConst>
class Property::ChildIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Property;
    using difference_type = std::ptrdiff_t;
    using reference = std::conditional_t<IsConst, const Property&, Property&>;
    using pointer = std::conditional_t<IsConst, const Property*, Property*>;

    ChildIterator() = default;

    operator ChildIterator<true>() const noexcept requires(!IsConst) { return {chunk_, index_}; }

    /// The child at which the iterator stands.
    reference operator*() const noexcept { return chunk_->Items()[index_]; }
    pointer operator->() const noexcept { return chunk_->Items() + index_; }

    ChildIterator& operator++() noexcept {
        if (++index_ == chunk_->used) {
            chunk_ = chunk_->next;
            index_ = 0;
        }
        return *this;
    }

    ChildIterator operator++(int) noexcept {
        ChildIterator before = *this;
        ++*this;
        return before;
    }

    bool operator==(const ChildIterator& other) const noexcept = default;

private:
    friend class Property;
    friend class ChildIterator<false>;

    ChildIterator(Chunk* chunk, std::size_t index) noexcept : chunk_(chunk), index_(index) {}

    Chunk* chunk_ = nullptr;
    std::size_t index_ = 0;
};

inline Property::iterator Property::begin() noexcept {
    const ChildList* children = Children();
    return {children != nullptr ? children->first : nullptr, 0};
}

inline Property::iterator Property::end() noexcept { return {}; }

inline Property::const_iterator Property::begin() const noexcept {
    const ChildList* children = Children();
    return {children != nullptr ? children->first : nullptr, 0};
}

inline Property::const_iterator Property::end() const noexcept { return {}; }

extern template Property& Property::SetChildT<long long>(const std::string&, const long long&);
extern template Property& Property::SetChildT<std::string>(const std::string&, const std::string&);
extern template Property& Property::SetChildT<bool>(const std::string&, const bool&);
extern template Property& Property::SetChildT<boost::rational<long long>>(const std::string&,
                                                                          const boost::rational<long long>&);
extern template Property& Property::CreateChildT<long long>(const std::string&, const long long&);
extern template Property& Property::CreateChildT<std::string>(const std::string&, const std::string&);
extern template Property& Property::CreateChildT<bool>(const std::string&, const bool&);
extern template Property& Property::CreateChildT<boost::rational<long long>>(const std::string&,
                                                                             const boost::rational<long long>&);

}  // namespace Quenzo::Core
