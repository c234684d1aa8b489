#include <tools/Help.h>

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace Quenzo::Tools {

namespace {

struct Examples {
    std::string_view command;
    std::string_view lines;
};

constexpr Examples kExamples[] = {
    {"",
     "  quenzo-conf job new --in clip.mov --stream 0 --preset web.json --out clip.mp4 > job.json\n"
     "  quenzo-conf job check job.json\n"
     "  quenzo-conf job draw job.json -o job.svg\n"
     "  quenzo-conf codec hevc\n"
     "  quenzo-conf bitrate --codec h264 --size 1920x1080 --fps 30 --explain\n"},
    {"job",
     "  quenzo-conf job new --in clip.mov --stream 0 --preset web.json --out clip.mp4 > job.json\n"
     "  quenzo-conf job check job.json\n"},
    {"job new",
     "  quenzo-conf job new --in clip.mov --stream 0 --stream 1 --preset web.json --out clip.mp4\n"
     "  quenzo-conf job new --probe clip.json --preset web.json --out clip.mp4\n"},
    {"job check",
     "  quenzo-conf job check job.json\n"
     "  quenzo-conf job new --probe clip.json --preset web.json --out clip.mp4 | quenzo-conf job check -\n"},
    {"job show",
     "  quenzo-conf job show job.json\n"
     "  quenzo-conf job show --json job.json\n"},
    {"job draw",
     "  quenzo-conf job draw job.json -o job.svg\n"
     "  quenzo-conf job draw job.json | dot -Tpdf > job.pdf\n"},
    {"job diff",
     "  quenzo-conf job diff before.json after.json\n"
     "  quenzo-conf job new --probe clip.json --preset web.json --out clip.mp4 | quenzo-conf job diff job.json -\n"},
    {"job path", "  quenzo-conf job path job.json 1 3\n"},
    {"describe",
     "  ffprobe -v error -of json -show_format -show_streams -show_chapters clip.mov | quenzo-conf describe -\n"
     "  quenzo-conf describe --json clip.json\n"},
    {"codecs", "  quenzo-conf codecs | grep proprietary\n"},
    {"formats", "  quenzo-conf formats | grep picture\n"},
    {"groups", "  quenzo-conf groups --json\n"},
    {"layouts", "  quenzo-conf layouts\n"},
    {"sample-formats", "  quenzo-conf sample-formats\n"},
    {"pixel-formats", "  quenzo-conf pixel-formats | grep RGB\n"},
    {"colours", "  quenzo-conf colours\n"},
    {"codec",
     "  quenzo-conf codec hevc\n"
     "  quenzo-conf codec --json CODEC_ID_H264\n"},
    {"format", "  quenzo-conf format matroska\n"},
    {"extension", "  quenzo-conf extension .mp4\n"},
    {"uti", "  quenzo-conf uti public.jpeg\n"},
    {"bitrate",
     "  quenzo-conf bitrate --codec h264 --size 1920x1080 --fps 30\n"
     "  quenzo-conf bitrate --codec hevc --size 3840x2160 --fps 30000/1001 --quality 4 --explain\n"},
    {"planes", "  quenzo-conf planes YUV420P --size 1920x1080\n"},
    {"orient",
     "  quenzo-conf orient 6 --size 4032x3024\n"
     "  quenzo-conf orient 90ccw --size 1920x1080\n"
     "  quenzo-conf orient -22.5 --size 640x480\n"},
};

}  // namespace

std::string FooterOf(std::string_view command) {
    const auto* const row = std::find_if(std::begin(kExamples), std::end(kExamples),
                                         [command](const Examples& examples) { return examples.command == command; });
    const std::string_view lines = row != std::end(kExamples) ? row->lines : "  none yet\n";
    return fmt::format(
        "Examples:\n{}\n"
        "Exit status: 0 done, 1 the answer is no, 2 wrong usage, 3 an input could not be read,\n"
        "4 an output could not be written.",
        lines);
}

}  // namespace Quenzo::Tools
