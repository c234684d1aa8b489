#pragma once

#include <foundation/Export.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>

namespace Quenzo {

/// An object that is shared by counting references to it and that destroys itself when the last one is dropped.
/// Hold it in an SP; call AddRef and Release by hand only where an SP cannot be used.
class QUENZO_API IRefCountable {
public:
    virtual ~IRefCountable();

    /// Adds one reference.
    virtual void AddRef() const = 0;

    /// The number of references at this moment; other threads may change it before the caller looks at it.
    virtual long GetRefCount() const = 0;

    /// Drops one reference and destroys the object when it was the last. Returns how many references remain.
    virtual long Release() const = 0;

protected:
    IRefCountable() = default;
    IRefCountable(const IRefCountable&) = default;
    IRefCountable& operator=(const IRefCountable&) = default;
};

inline void intrusive_ptr_add_ref(const IRefCountable* object) { object->AddRef(); }
inline void intrusive_ptr_release(const IRefCountable* object) { object->Release(); }

/// A reference to a counted object. May be copied and dropped on any thread.
template <typename T>
using SP = boost::intrusive_ptr<T>;

/// The counter that a counted class embeds. It starts at 0, and a copy starts at 0 too: references belong to an object,
/// not to its value.
class RefCountImpl {
public:
    RefCountImpl() = default;

    /// Copying leaves both counts as they are.
    RefCountImpl(const RefCountImpl& /*other*/) noexcept {}
    RefCountImpl& operator=(const RefCountImpl& /*other*/) noexcept { return *this; }
    ~RefCountImpl() = default;

    /// Counts one reference more.
    void AddRefImpl() const noexcept { count_.fetch_add(1, std::memory_order_relaxed); }

    /// The count at this moment.
    long GetRefCountImpl() const noexcept { return count_.load(std::memory_order_relaxed); }

    /// Returns the remaining count. The thread that is told 0 sees all that other threads did before they let go.
    long ReleaseImpl() const noexcept { return count_.fetch_sub(1, std::memory_order_acq_rel) - 1; }

private:
    mutable std::atomic<long> count_{0};
};

/// Implements the counting of `Interface` with an embedded counter, for a class that derives from nothing else.
template <typename Interface>
class RefCounted : public Interface {
public:
    /// As in IRefCountable.
    void AddRef() const override { counter_.AddRefImpl(); }

    /// As in IRefCountable.
    long GetRefCount() const override { return counter_.GetRefCountImpl(); }

    /// As in IRefCountable.
    long Release() const override {
        const long remaining = counter_.ReleaseImpl();
        if (remaining == 0) {
            delete this;
        }
        return remaining;
    }

private:
    RefCountImpl counter_;
};

}  // namespace Quenzo
