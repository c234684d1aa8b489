#include <foundation/Blob.h>

#include <utility>

namespace Quenzo {

SP<Blob> Blob::Create(std::vector<std::uint8_t> bytes) { return SP<Blob>(new Blob(std::move(bytes))); }

Blob::Blob(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

const std::uint8_t* Blob::GetData() const { return bytes_.data(); }

std::size_t Blob::GetSize() const { return bytes_.size(); }

}  // namespace Quenzo
