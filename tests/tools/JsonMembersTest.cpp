// The members of every command's --json output, and that the guide's page of the program names the same.

#include <tests/tools/ProgramRunner.h>

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace Quenzo::Tests {
namespace {

// Not valid for every reason that there is.
const char* const kJob =
    R"({"vertices":[{"id":1},{"id":2},{"id":3},{"id":4}],"edges":[{"from":1,"to":2},{"from":3,"to":3}]})";

struct Answer {
    std::string command;
    std::vector<std::string> arguments;
    std::string input;
    std::string members;
};

// With arguments that make every member appear.
const std::vector<Answer>& Answers() {
    static const std::vector<Answer> answers = {
        {"job new",
         {"job", "new", "--in", "a", "--stream", "0", "--preset", ShippedPreset("music-flac.json"), "--out", "b"},
         "",
         "`vertices` (`id`, `data`), `edges` (`id`, `from`, `to`, `data`)"},
        {"job check", {"job", "check", "-"}, kJob, "`valid`, `findings` (`code`, `nodes`, `pieces`)"},
        {"job show",
         {"job", "show", "-"},
         kJob,
         "`nodes` (`id`, `name`, `tree`), `links` (`id`, `from`, `to`, `name`, `tree`)"},
        {"job draw", {"job", "draw", "-"}, kJob, "`dot`"},
        {"job diff",
         {"job", "diff", "-", QUENZO_TEST_JOBS "/probed-clip.json"},
         kJob,
         "`same`, `differences` (`change`, `where`, `path`, `before`, `after`)"},
        {"job path", {"job", "path", "-", "1", "2"}, kJob, "`reachable`, `path`"},
        {"describe",
         {"describe", QUENZO_TEST_PROBES "/rotated.mp4.json"},
         "",
         "`file` (`format_file`), `streams` (`index`, `format_codec_video`, "
         "`format_codec_audio`), `notMapped`"},
        {"codecs", {"codecs"}, "", "`codecs` (`id`, `class`, `displayName`, `remarks`)"},
        {"formats", {"formats"}, "", "`formats` (`id`, `class`, `displayName`, `extensions`)"},
        {"groups", {"groups"}, "", "`groups` (`group`, `kind`, `tip`, `extensions`)"},
        {"layouts", {"layouts"}, "", "`layouts` (`id`, `channels`)"},
        {"sample-formats",
         {"sample-formats"},
         "",
         "`sampleFormats` (`id`, `bits`, `planar`, `float`, `signed`, `twin`)"},
        {"pixel-formats",
         {"pixel-formats"},
         "",
         "`pixelFormats` (`name`, `number`, `components`, `planes`, `chroma`, `bits`, `shift`, "
         "`range`, `flags`)"},
        {"colours",
         {"colours"},
         "",
         "`primaries` (`number`, `name`, `accepted`, `meaning`), `transferFunctions` (`number`, "
         "`name`, `accepted`, `meaning`), `matrices` (`number`, `name`, `accepted`, `meaning`)"},
        {"codec",
         {"codec", "aac"},
         "",
         "`codec`, `meaning`, `class`, `displayName`, `shortName`, `catalogues`, `proprietary`, "
         "`decoding`, `encoding`, `bitrateNeeded`"},
        {"format",
         {"format", "matroska"},
         "",
         "`container`, `meaning`, `class`, `displayName`, `catalogues`, `extensions`, "
         "`extensionOfANewFile`, `reading`, `writing`"},
        {"extension", {"extension", "mp4"}, "", "`extension`, `containers`, `newFilesOf`, `groups`"},
        {"uti",
         {"uti", "public.png"},
         "",
         "`typeIdentifier`, `canBeOpened`, `container`, `codec`, `containerOfAnAnimation`, "
         "`codecOfAnAnimation`, `extensions`"},
        {"bitrate",
         {"bitrate", "--codec", "h264", "--size", "1x1", "--fps", "1", "--quality", "1", "--explain"},
         "",
         "`codec`, `size`, `framesPerSecond`, `quality`, `bitsPerSecond`, `lowest`, `highest`, "
         "`steps` (`step`, `how`, `value`)"},
        {"planes",
         {"planes", "nv12", "--size", "2x2"},
         "",
         "`pixelFormat`, `size`, `bytes`, `planes` (`plane`, `width`, `height`, `bytesInARow`, "
         "`bytes`)"},
        {"orient",
         {"orient", "6", "--size", "2x2"},
         "",
         "`orientation`, `ExifNumber`, `mirrored`, `degreesClockwise`, "
         "`degreesCounterClockwise`, `size`, `sizeWhenShown`, `sizeWhenShownEven`, `matrix`, "
         "`entries` (`row`, `x`, `y`, `projective`)"},
    };
    return answers;
}

std::string Listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "`" : ", `") + name + '`';
    }
    return text;
}

void AddNames(const rapidjson::Value& value, std::vector<std::string>& names) {
    if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            const std::string name = member.name.GetString();
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
    }
}

// The members as the page writes them: "`a`, `b` (`of b`, `of b`)".
std::string MembersOf(const std::string& json) {
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    if (document.HasParseError() || !document.IsObject()) {
        return "no JSON object";
    }
    std::string text;
    for (auto place = document.MemberBegin(); place < document.MemberEnd(); ++place) {
        const auto& member = *place;
        std::vector<std::string> names;
        AddNames(member.value, names);
        if (member.value.IsArray()) {
            for (const rapidjson::Value& element : member.value.GetArray()) {
                AddNames(element, names);
            }
        }
        text += (text.empty() ? "" : ", ") + Listed({member.name.GetString()});
        text += names.empty() ? "" : " (" + Listed(names) + ")";
    }
    return text;
}

TEST(JsonMembers, AreTheseForEveryCommand) {
    for (const Answer& answer : Answers()) {
        std::vector<std::string> arguments = answer.arguments;
        arguments.emplace_back("--json");
        const auto result = RunProgram(arguments, answer.input);
        EXPECT_EQ(MembersOf(result.output), answer.members) << answer.command;
    }
}

TEST(JsonMembers, StandInTheGuide) {
    const std::string page =
        ReadFile(std::filesystem::path(QUENZO_TEST_TOOLS).parent_path() / "docs" / "guide" / "the-program.md");
    for (const Answer& answer : Answers()) {
        const std::string row = "| `" + answer.command + "` | " + answer.members + " |\n";
        EXPECT_NE(page.find(row), std::string::npos) << row;
    }
}

}  // namespace
}  // namespace Quenzo::Tests
