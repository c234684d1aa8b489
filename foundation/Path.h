#pragma once

#include <foundation/Export.h>

#include <concepts>
#include <string>
#include <string_view>

namespace Quenzo {

/// std::filesystem::path, or whatever else gives its text as UTF-8. Its header is among the slowest to compile, so it
/// is left to those who have such paths.
template <typename T>
concept FilesystemPath = requires(const T& path) {
    { path.u8string() } -> std::same_as<std::u8string>;
};

/// The path of a file. Made from UTF-8 text or from a file-system path; the text is kept as it is given.
class QUENZO_API ioPath {
public:
    ioPath() = default;

    /// Text is taken for UTF-8 and not checked; a null pointer is not allowed.
    ioPath(std::string utf8);
    ioPath(std::string_view utf8);
    ioPath(const char* utf8);

    /// Takes over the text of a file-system path.
    template <FilesystemPath Path>
    ioPath(const Path& path) {
        const std::u8string text = path.u8string();
        utf8_.assign(text.begin(), text.end());
    }

    /// The path as UTF-8 text.
    const std::string& utf8string() const noexcept { return utf8_; }

    /// The path as the file system's functions take it: static_cast<std::filesystem::path>(path).
    template <FilesystemPath Path>
    requires std::constructible_from<Path, std::u8string>
    explicit operator Path() const { return Path(std::u8string(utf8_.begin(), utf8_.end())); }

    bool operator==(const ioPath& other) const = default;

private:
    std::string utf8_;
};

}  // namespace Quenzo
