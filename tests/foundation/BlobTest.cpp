// Covers foundation/Blob.h: the bytes of a blob, its emptiness, its sharing.

#include <foundation/Blob.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quenzo {
namespace {

static_assert(std::is_base_of_v<IRefCountable, IBlob> && std::is_abstract_v<IBlob>);
static_assert(std::is_same_v<decltype(std::declval<const IBlob&>().GetData()), const std::uint8_t*>);
static_assert(std::is_same_v<decltype(std::declval<const IBlob&>().GetSize()), std::size_t>);
static_assert(!std::is_constructible_v<Blob, std::vector<std::uint8_t>>, "a blob lives behind an SP only");

std::vector<std::uint8_t> Bytes(const IBlob& blob) { return {blob.GetData(), blob.GetData() + blob.GetSize()}; }

TEST(BlobTest, Create_KeepsEveryByte) {
    std::vector<std::uint8_t> all;
    for (unsigned value = 0; value < 256; ++value) {
        all.push_back(static_cast<std::uint8_t>(value));
    }
    const SP<const IBlob> blob = Blob::Create(all);
    EXPECT_EQ(blob->GetSize(), 256U);
    EXPECT_EQ(Bytes(*blob), all);
}

TEST(BlobTest, Create_FromNothingIsEmpty) {
    const SP<const IBlob> blob = Blob::Create({});
    EXPECT_EQ(blob->GetSize(), 0U);
}

TEST(BlobTest, Create_CopiesWhatItIsGiven) {
    std::vector<std::uint8_t> bytes = {1, 2, 3};
    const SP<const IBlob> blob = Blob::Create(bytes);
    bytes[0] = 9;
    EXPECT_EQ(Bytes(*blob), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(BlobTest, Create_TakesATemporaryOver) {
    std::vector<std::uint8_t> bytes(1000, 7);
    const std::uint8_t* const data = bytes.data();
    EXPECT_EQ(Blob::Create(std::move(bytes))->GetData(), data);
}

TEST(BlobTest, Reference_IsCounted) {
    const SP<Blob> blob = Blob::Create({1, 2});
    EXPECT_EQ(blob->GetRefCount(), 1);
    SP<const IBlob> other = blob;
    EXPECT_EQ(blob->GetRefCount(), 2);
    EXPECT_EQ(other->GetData(), blob->GetData());
    other.reset();
    EXPECT_EQ(blob->GetRefCount(), 1);
}

}  // namespace
}  // namespace Quenzo
