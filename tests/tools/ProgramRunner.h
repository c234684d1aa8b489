#pragma once

#include <tests/RunProgram.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Quenzo::Tests {

using Testing::ProgramResult;

/// Runs quenzo-conf with these arguments and this standard input, and waits for its end. `environment` holds additional
/// variables as NAME=value.
ProgramResult RunProgram(const std::vector<std::string>& arguments, const std::string& input = {},
                         const std::vector<std::string>& environment = {});

/// All bytes of a file; none when it cannot be read.
std::string ReadFile(const std::filesystem::path& path);

/// A folder of its own that goes away with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The path of a file in it.
    std::string Path(const std::string& name) const { return (path_ / name).string(); }

    /// Makes a file in it and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const;

    std::string Read(const std::string& name) const;

    /// The names of what is in it, sorted.
    std::vector<std::string> List() const;

private:
    std::filesystem::path path_;
};

/// The path of a preset that is shipped with the examples.
std::string ShippedPreset(const std::string& name);

}  // namespace Quenzo::Tests
