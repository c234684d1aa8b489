#pragma once

#include <tests/tools/ProgramRunner.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Quenzo::Docs {

/// A file of the repository.
std::filesystem::path InRepository(const std::string& path);

/// The bytes of a file; a failure of the test when it cannot be read.
std::string ReadFile(const std::filesystem::path& file);

/// Runs a command, under the emulator when programs need one, and waits for its end.
Testing::ProgramResult RunBuilt(std::vector<std::string> command);

/// The folder that the examples and sessions of the guide run in, with the files that they read:
///
///   web.json, archive.json, music.json   the presets of examples/presets
///   clip.json                            what ffprobe prints of a clip with video and sound
///
/// It is the current folder of this process as long as it lives.
class GuideFolder {
public:
    GuideFolder();
    GuideFolder(const GuideFolder&) = delete;
    GuideFolder& operator=(const GuideFolder&) = delete;
    ~GuideFolder();

    /// The folder itself.
    const Tests::TemporaryFolder& Files() const { return folder_; }

private:
    Tests::TemporaryFolder folder_;
    std::filesystem::path before_;
};

}  // namespace Quenzo::Docs
