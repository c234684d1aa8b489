// A module whose functions appear in call stacks. It is built twice, with names of one length, so that both have the
// same functions at the same places.

#include <tests/modules/Modules.h>

#include <foundation/Exception.h>

#include <string>

namespace {

std::string stack;

}  // namespace

extern "C" MODULE_API void STACK_FUNCTION() {
    stack = Quenzo::GetCallStack();
    asm volatile("" ::: "memory");
}

const char* StackOfModule() {
    STACK_FUNCTION();
    return stack.c_str();
}
