// A module whose functions appear in call stacks. It is built twice, so that both have the same code at the same
// places; but the names of their functions stand at different places, or an outdated one could be right by chance.

#include <tests/modules/Modules.h>

#include <foundation/Exception.h>

#include <string>

namespace {

std::string stack;

}  // namespace

extern "C" MODULE_API void STACK_PADDING() { stack.clear(); }

extern "C" MODULE_API void STACK_FUNCTION() {
    stack = Quenzo::GetCallStack();
    asm volatile("" ::: "memory");
}

const char* StackOfModule() {
    STACK_FUNCTION();
    return stack.c_str();
}
