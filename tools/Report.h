#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace Quenzo::Tools {

/// What a look-up found: named values and tables, printed for people or as JSON.
///
/// A name is given in words, "display name"; its JSON key is made from it, "displayName". Words in a name are in lower
/// case, but for abbreviations.
class Report {
public:
    using Texts = std::vector<std::string>;
    using Value = std::variant<bool, std::int64_t, double, std::string, Texts>;
    using Row = std::vector<Value>;

    struct Table {
        std::string name;
        Texts columns;
        std::vector<Row> rows;  ///< each as long as there are columns
    };

    void Add(const std::string& name, Value value) { fields_.emplace_back(name, std::move(value)); }
    void Add(Table table) { tables_.push_back(std::move(table)); }

    /// For people: the values one to a line with their names before them, then the tables in columns. Lists are joined
    /// by ", " and broken at 120 columns; a missing text is "-".
    std::string ToText() const;

    /// For scripts: one object with a member for each value and for each table, which is an array of objects.
    std::string ToJson() const;

    /// Prints it on standard output.
    void Print(bool asJson) const;

private:
    std::vector<std::pair<std::string, Value>> fields_;
    std::vector<Table> tables_;
};

}  // namespace Quenzo::Tools
