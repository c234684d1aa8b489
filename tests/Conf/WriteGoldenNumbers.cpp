// Writes the golden numbers to the standard output:
//
//   build/dev/tests/Conf/write-golden-numbers > tests/data/golden-numbers.txt
//
// Only a new kind of case is a reason to do so: a number that changed is a fault.

#include <tests/Conf/GoldenNumbers.h>

#include <iostream>

int main() {
    for (const std::string& line : Quenzo::Testing::GoldenNumbers()) {
        std::cout << line << '\n';
    }
}
