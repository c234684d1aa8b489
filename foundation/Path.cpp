#include <foundation/Path.h>

#include <utility>

namespace Quenzo {

ioPath::ioPath(std::string utf8) : utf8_(std::move(utf8)) {}

ioPath::ioPath(const char* utf8) : utf8_(utf8) {}

ioPath::ioPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    utf8_.assign(text.begin(), text.end());
}

std::filesystem::path ioPath::ToFilesystemPath() const { return std::u8string(utf8_.begin(), utf8_.end()); }

}  // namespace Quenzo
