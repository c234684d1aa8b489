#pragma once

#include <string>
#include <vector>

namespace Quenzo::Tools {

/// What the catalogues say of a codec: "video", "audio", "subtitles" or "other"; the display name, or nothing; the
/// names of all catalogues that hold it; and what users have to know, such as "proprietary".
std::string ClassOfCodec(const std::string& codecId);
std::string DisplayNameOfCodec(const std::string& codecId);
std::vector<std::string> CataloguesOfCodec(const std::string& codecId);
std::vector<std::string> RemarksOnCodec(const std::string& codecId);

/// The same of a container: "picture", "animation", "raw photograph", "audio", "text subtitles" or "other".
std::string ClassOfFormat(const std::string& format);
std::string DisplayNameOfFormat(const std::string& format);
std::vector<std::string> CataloguesOfFormat(const std::string& format);

}  // namespace Quenzo::Tools
