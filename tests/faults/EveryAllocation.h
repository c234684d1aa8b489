#pragma once

// Runs an operation again and again, and lets another of its allocations fail each time.

#include <tests/faults/FailingMemory.h>

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <new>

namespace Quenzo::Testing {

constexpr long kManyAllocations = 20000;

/// Runs a call in which the nth allocation fails, as often as there are allocations, in both kinds of shortage, and
/// once more without a failure. After each run `look(hasFailed)` is told whether a bad_alloc arrived. When the call and
/// what it left behind are gone, no block may be left. Returns how many allocations failed.
///
/// `make` returns the objects that the call is about, `act` and `look` take them by reference.
template <typename Make, typename Act, typename Look>
long FailEveryAllocation(Make make, Act act, Look look) {
    long failures = 0;
    for (const Shortage shortage : {Shortage::Once, Shortage::Lasting}) {
        bool isThrough = false;
        for (long n = 1; !isThrough && !::testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE(::testing::Message()
                         << "allocation " << n << (shortage == Shortage::Once ? "" : " and all later"));
            const long before = LiveBlocks();
            {
                auto objects = make();
                bool hasFailed = false;
                {
                    const FailingMemory fault(n, shortage);
                    try {
                        act(objects);
                    } catch (const std::bad_alloc&) {
                        hasFailed = true;
                    }
                    isThrough = !fault.HasStruck() || n == kManyAllocations;
                }
                EXPECT_FALSE(isThrough && hasFailed);
                failures += isThrough ? 0 : 1;
                look(objects, hasFailed);
            }
            EXPECT_EQ(LiveBlocks(), before);
        }
    }
    return failures;
}

/// The same for an operation that either happens as a whole or leaves the objects as they were; then it can be done
/// again. `state` returns what can be seen of the objects, as a value that can be compared and printed. Expects that
/// there is an allocation to fail.
template <typename Make, typename Act, typename State>
void ExpectAllOrNothing(Make make, Act act, State state) {
    auto first = make();
    const auto before = state(first);
    act(first);
    const auto after = state(first);
    const long failures = FailEveryAllocation(make, act, [&](auto& objects, bool hasFailed) {
        if (hasFailed) {
            EXPECT_EQ(state(objects), before);
            act(objects);
        }
        EXPECT_EQ(state(objects), after);
    });
    EXPECT_GT(failures, 0);
}

}  // namespace Quenzo::Testing
