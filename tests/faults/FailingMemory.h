#pragma once

// Memory that runs out on demand. The program that this unit is linked into has an operator new of its own, which
// counts blocks and can be told to fail; the libraries call it too.

namespace Quenzo::Testing {

/// The blocks that operator new handed out and that are not freed, on all threads.
long LiveBlocks() noexcept;

/// How the memory runs out: for one allocation, or for good.
enum class Shortage { Once, Lasting };

/// Lets operator new fail at its nth call from now on, n counted from 1, until the object goes away. One at a time.
class FailingMemory {
public:
    FailingMemory(long n, Shortage shortage) noexcept;
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory();

    /// True when an allocation has failed.
    bool HasStruck() const noexcept;
};

}  // namespace Quenzo::Testing
