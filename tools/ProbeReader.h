#pragma once

#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/IFormatFile.h>
#include <foundation/RefCount.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Tools {

/// A stream of a probed file.
struct ProbedStream {
    std::uint32_t index;  ///< its number in the file
    SP<Conf::IFormatCodec> description;
};

/// What a prober said of a media file, as descriptions.
struct ProbedMedia {
    SP<Conf::IFormatFile> file;
    std::vector<ProbedStream> streams;   ///< video, audio and subtitles, in the file's order
    std::vector<std::string> notMapped;  ///< what was said and has no place in a description, one line each
};

/// Reads what `ffprobe -v error -of json -show_format -show_streams -show_chapters` prints. `name` is where the text
/// comes from, for messages. Fails with Unreadable when the text is no such output.
ProbedMedia ReadProbe(const std::string& text, const std::string& name);

}  // namespace Quenzo::Tools
