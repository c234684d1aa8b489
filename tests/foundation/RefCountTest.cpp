// Covers foundation/RefCount.h: the counter, the objects that embed it, sharing among threads, and the order of the
// virtual functions of IRefCountable.

#include <foundation/RefCount.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <new>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quenzo {
namespace {

using Testing::CallVirtualSlot;
using Testing::VirtualSlot;

static_assert(std::is_abstract_v<IRefCountable> && std::has_virtual_destructor_v<IRefCountable>);
static_assert(!std::is_polymorphic_v<RefCountImpl>);
static_assert(std::is_same_v<decltype(std::declval<const RefCountImpl&>().ReleaseImpl()), long>);
static_assert(std::is_convertible_v<SP<IRefCountable>, SP<const IRefCountable>>);
static_assert(!std::is_convertible_v<SP<const IRefCountable>, SP<IRefCountable>>);

// How often objects of a class were destroyed, and how often their memory was freed.
struct Ends {
    int destroyed = 0;
    int freed = 0;
};

Ends& Seen() {
    static Ends ends;
    return ends;
}

// An owner as any class of the library is one: it embeds the counter, and can be copied.
class Owner : public IRefCountable {
public:
    explicit Owner(int number = 0) : number_(number) {}
    Owner(const Owner&) = default;
    Owner& operator=(const Owner&) = default;
    ~Owner() override { ++Seen().destroyed; }

    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* memory) {
        ++Seen().freed;
        ::operator delete(memory);
    }

    void AddRef() const override { counter_.AddRefImpl(); }
    long GetRefCount() const override { return counter_.GetRefCountImpl(); }
    long Release() const override {
        const long remaining = counter_.ReleaseImpl();
        if (remaining == 0) {
            delete this;
        }
        return remaining;
    }

    int GetNumber() const { return number_; }

private:
    RefCountImpl counter_;
    int number_;
};

class RefCountTest : public ::testing::Test {
protected:
    RefCountTest() { Seen() = {}; }
};

TEST_F(RefCountTest, Counter_StartsAtZero) {
    const RefCountImpl counter;
    EXPECT_EQ(counter.GetRefCountImpl(), 0);
}

TEST_F(RefCountTest, Counter_CountsUpAndDown) {
    const RefCountImpl counter;
    counter.AddRefImpl();
    counter.AddRefImpl();
    counter.AddRefImpl();
    EXPECT_EQ(counter.GetRefCountImpl(), 3);
    EXPECT_EQ(counter.ReleaseImpl(), 2);
    EXPECT_EQ(counter.GetRefCountImpl(), 2);
    EXPECT_EQ(counter.ReleaseImpl(), 1);
    EXPECT_EQ(counter.ReleaseImpl(), 0);
}

TEST_F(RefCountTest, Counter_IsNeverCopied) {
    const RefCountImpl counter;
    counter.AddRefImpl();
    counter.AddRefImpl();
    const RefCountImpl copy(counter);
    EXPECT_EQ(copy.GetRefCountImpl(), 0);
    EXPECT_EQ(counter.GetRefCountImpl(), 2);
    RefCountImpl assigned;
    assigned.AddRefImpl();
    assigned = counter;
    EXPECT_EQ(assigned.GetRefCountImpl(), 1);
}

TEST_F(RefCountTest, Release_ReturnsWhatRemainsAndDestroysTheLast) {
    const auto* const object = new Owner();
    EXPECT_EQ(object->GetRefCount(), 0);
    object->AddRef();
    object->AddRef();
    EXPECT_EQ(object->GetRefCount(), 2);
    EXPECT_EQ(object->Release(), 1);
    EXPECT_EQ(Seen().destroyed, 0);
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(Seen().destroyed, 1);
    EXPECT_EQ(Seen().freed, 1);
}

TEST_F(RefCountTest, SP_CountsItsCopies) {
    SP<Owner> first(new Owner(5));
    EXPECT_EQ(first->GetRefCount(), 1);
    {
        const SP<const Owner> second = first;
        const SP<IRefCountable> third = first;
        EXPECT_EQ(first->GetRefCount(), 3);
        EXPECT_EQ(second->GetNumber(), 5);
    }
    EXPECT_EQ(first->GetRefCount(), 1);
    const SP<Owner> moved = std::move(first);
    EXPECT_EQ(moved->GetRefCount(), 1);
    EXPECT_EQ(Seen().destroyed, 0);
}

TEST_F(RefCountTest, SP_DestroysThroughTheInterface) {
    SP<const IRefCountable> object(new Owner());
    object.reset();
    EXPECT_EQ(Seen().destroyed, 1);
    EXPECT_EQ(Seen().freed, 1);
}

TEST_F(RefCountTest, SP_IsNotHeldByAClone) {
    const SP<Owner> source(new Owner(5));
    const SP<Owner> other = source;
    const SP<Owner> clone(new Owner(*source));
    EXPECT_EQ(clone->GetRefCount(), 1);
    EXPECT_EQ(clone->GetNumber(), 5);
    EXPECT_EQ(source->GetRefCount(), 2);
    *other = *clone;
    EXPECT_EQ(source->GetRefCount(), 2);
}

TEST_F(RefCountTest, IntrusivePointerFunctions_CallTheInterface) {
    const Owner* const object = new Owner();
    intrusive_ptr_add_ref(object);
    intrusive_ptr_add_ref(object);
    EXPECT_EQ(object->GetRefCount(), 2);
    intrusive_ptr_release(object);
    EXPECT_EQ(object->GetRefCount(), 1);
    intrusive_ptr_release(object);
    EXPECT_EQ(Seen().destroyed, 1);
}

class Interface : public IRefCountable {
public:
    virtual int GetNumber() const = 0;
};

class Implementation : public RefCounted<Interface> {
public:
    ~Implementation() override { ++Seen().destroyed; }
    int GetNumber() const override { return 7; }
};

TEST_F(RefCountTest, RefCounted_ImplementsTheCountingOfAnInterface) {
    SP<Interface> object(new Implementation());
    EXPECT_EQ(object->GetNumber(), 7);
    EXPECT_EQ(object->GetRefCount(), 1);
    object->AddRef();
    EXPECT_EQ(object->GetRefCount(), 2);
    EXPECT_EQ(object->Release(), 1);
    object.reset();
    EXPECT_EQ(Seen().destroyed, 1);
}

TEST_F(RefCountTest, RefCounted_StartsACopyAtZero) {
    const SP<Implementation> source(new Implementation());
    const SP<Implementation> copy(new Implementation(*source));
    EXPECT_EQ(copy->GetRefCount(), 1);
    EXPECT_EQ(source->GetRefCount(), 1);
}

constexpr std::size_t kThreads = 4;

// What each thread writes without a lock; the destructor reads it, on whichever thread lets go last.
class Shared : public RefCounted<IRefCountable> {
public:
    explicit Shared(int* sum) : sum_(sum) {}
    ~Shared() override {
        for (const int each : written) {
            *sum_ += each;
        }
        ++Seen().destroyed;
    }

    mutable std::array<int, kThreads> written = {};

private:
    int* sum_;
};

TEST_F(RefCountTest, Threads_CopyAndDropReferencesAtOnce) {
    constexpr int rounds = 20000;
    int sum = 0;
    const SP<const Shared> object(new Shared(&sum));
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([object] {
            for (int round = 0; round < rounds; ++round) {
                const SP<const IRefCountable> copy = object;
                const SP<const IRefCountable> another = copy;
                if (another->GetRefCount() < 2) {
                    ADD_FAILURE() << "a reference was lost";
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(object->GetRefCount(), 1);
    EXPECT_EQ(Seen().destroyed, 0);
}

TEST_F(RefCountTest, Threads_TheLastOneDestroysAndSeesWhatTheOthersWrote) {
    constexpr int rounds = 300;
    int sum = 0;
    for (int round = 0; round < rounds; ++round) {
        SP<const Shared> object(new Shared(&sum));
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([i, mine = object]() mutable {
                mine->written[i] = 1;
                mine.reset();
            });
        }
        object.reset();
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    EXPECT_EQ(Seen().destroyed, rounds);
    EXPECT_EQ(sum, rounds * static_cast<int>(kThreads));
}

TEST(VirtualSlotsTest, IRefCountable_CountsBehindTheTwoDestructorSlots) {
    EXPECT_EQ(VirtualSlot(&IRefCountable::AddRef), 2U);
    EXPECT_EQ(VirtualSlot(&IRefCountable::GetRefCount), 3U);
    EXPECT_EQ(VirtualSlot(&IRefCountable::Release), 4U);
}

TEST(VirtualSlotsTest, IRefCountable_DestroysInSlotsZeroAndOne) {
    Seen() = {};
    alignas(Owner) std::array<std::byte, sizeof(Owner)> memory;
    CallVirtualSlot(::new (memory.data()) Owner(), 0);
    EXPECT_EQ(Seen().destroyed, 1);
    EXPECT_EQ(Seen().freed, 0);
    CallVirtualSlot(new Owner(), 1);
    EXPECT_EQ(Seen().destroyed, 2);
    EXPECT_EQ(Seen().freed, 1);
}

TEST(VirtualSlotsTest, Interface_ContinuesBehindTheCounting) {
    EXPECT_EQ(VirtualSlot(&Interface::GetNumber), 5U);
    EXPECT_EQ(VirtualSlot(&Interface::Release), 4U);
}

TEST(VirtualSlotsTest, FunctionThatIsNotVirtual_HasNoSlot) {
    EXPECT_EQ(VirtualSlot(&Owner::GetNumber), std::nullopt);
    EXPECT_EQ(VirtualSlot(&RefCountImpl::ReleaseImpl), std::nullopt);
}

}  // namespace
}  // namespace Quenzo
