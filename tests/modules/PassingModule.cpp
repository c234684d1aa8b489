// A module between the one that raises and the one that catches: it knows none of the classes.

#include <tests/modules/Modules.h>

namespace {

volatile int passed = 0;

struct Passage {
    ~Passage() { passed = passed + 1; }
};

}  // namespace

void PassOn(void (*call)(int), int number) {
    const Passage passage;
    try {
        call(number);
    } catch (...) {
        throw;
    }
}
