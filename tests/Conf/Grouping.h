#pragma once

#include <locale>
#include <string>

namespace Quenzo::Conf::Testing {

/// Digits in groups of three, as many countries write them.
class Grouping : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

/// The locale of C, with such digits.
inline std::locale GroupingLocale() { return {std::locale::classic(), new Grouping}; }

}  // namespace Quenzo::Conf::Testing
