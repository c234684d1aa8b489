#pragma once

#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Quenzo {

/// A shared, read-only run of bytes, such as the private data of a codec.
class QUENZO_API IBlob : public IRefCountable {
public:
    /// The first byte; not meaningful when the size is 0. Valid as long as the blob lives.
    virtual const std::uint8_t* GetData() const = 0;

    /// The number of bytes.
    virtual std::size_t GetSize() const = 0;
};

/// A blob that owns its bytes.
class QUENZO_API Blob : public RefCounted<IBlob> {
public:
    /// Takes over the bytes; there may be none.
    static SP<Blob> Create(std::vector<std::uint8_t> bytes);

    const std::uint8_t* GetData() const override;
    std::size_t GetSize() const override;

private:
    explicit Blob(std::vector<std::uint8_t> bytes);

    std::vector<std::uint8_t> bytes_;
};

}  // namespace Quenzo
