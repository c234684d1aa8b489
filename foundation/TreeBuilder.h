#pragma once

// Shared by the libraries' own sources; not installed.

#include <foundation/Export.h>
#include <foundation/Property.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace Quenzo::Core {

/// Builds a tree from the events of one JSON value, whether a parser sends them or a RapidJSON value does: a handler as
/// RapidJSON knows them. PropertySerializer says which JSON makes which tree. A value that makes none is refused with
/// the first event that shows it: this event and all after it are answered with false, and the PropertyException comes
/// when the tree is asked for.
class QUENZO_API TreeBuilder {
public:
    /// For a tree of that name.
    explicit TreeBuilder(std::string name);

    /// Gives a property the content of the tree; null leaves it as it is. The builder then waits for the next value.
    void MoveInto(Property& target);

    /// Returns the first child of the tree. When there is none, returns a node of the builder's name, with the content
    /// of the tree moved into it. The builder then waits for the next value.
    Property TakeFirstChild();

    bool Null();
    bool Bool(bool value);
    bool Int(int value) { return Int64(value); }
    bool Uint(unsigned value) { return Int64(value); }
    bool Int64(std::int64_t value);
    bool Uint64(std::uint64_t value);
    bool Double(double value);
    bool String(const char* text, std::size_t length, bool copy);
    bool Key(const char* text, std::size_t length, bool copy);
    bool StartObject();
    bool EndObject(std::size_t count);
    bool StartArray();
    bool EndArray(std::size_t count);

private:
    // What an open array or object is. An array is not known to be a rational or a list of children before its first
    // element shows it.
    enum class Kind { Node, Array, Ratio, List, OnlyChild };

    struct Level {
        Kind kind;
        std::size_t children;  ///< where those of the level begin among the properties
    };

    // An integer, or the text of a number that is none.
    struct Number {
        std::int64_t integer;
        std::string text;

        std::string Text() const { return text.empty() ? std::to_string(integer) : text; }
    };

    template <typename Event>
    bool Attempt(Event event);

    void Reset();
    void RequireSuccess();
    bool IsInArray() const noexcept;
    Property& ForScalar();
    void AddNumber(Number number);
    void RefuseOrAdd(std::string number);
    void Descend(Kind kind);
    void Close(const Level& level);
    void CollectChildren(std::size_t first);
    void SetRatio(Property& target) const;
    [[noreturn]] void RefuseArray() const;

    // The root, then the children that no node holds yet: those of the innermost level last.
    std::vector<Property> properties_;
    std::vector<Level> levels_;
    std::vector<Number> numbers_;
    // The root is complete and a node, though its children still stand behind it.
    bool isNode_ = false;
    std::exception_ptr failure_;
};

}  // namespace Quenzo::Core
