#include <tests/docs/Guide.h>

#include <foundation/StringUtils.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace Quenzo::Docs {

std::filesystem::path InRepository(const std::string& path) { return std::filesystem::path(QUENZO_TEST_ROOT) / path; }

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

Testing::ProgramResult RunBuilt(std::vector<std::string> command) {
    std::vector<std::string> words;
    SplitString(words, QUENZO_TEST_EMULATOR, ' ');
    words.insert(words.end(), command.begin(), command.end());
    return Testing::RunProgram(words);
}

GuideFolder::GuideFolder() : before_(std::filesystem::current_path()) {
    folder_.Write("web.json", ReadFile(Tests::ShippedPreset("web-h264-aac-mp4.json")));
    folder_.Write("archive.json", ReadFile(Tests::ShippedPreset("archive-hevc10-mkv.json")));
    folder_.Write("music.json", ReadFile(Tests::ShippedPreset("music-flac.json")));
    folder_.Write("clip.json", ReadFile(InRepository("tests/data/probe/rotated.mp4.json")));
    std::filesystem::current_path(folder_.Path(""));
}

GuideFolder::~GuideFolder() { std::filesystem::current_path(before_); }

}  // namespace Quenzo::Docs
