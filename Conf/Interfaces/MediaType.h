#pragma once

#include <cstdint>

namespace Quenzo::Conf {

/// The kind of a stream.
enum class MediaType : std::int32_t {
    None = 0,            ///< none, or not known
    Video = 1,           ///< video and still images
    Audio = 2,           ///< audio
    SubtitlesVideo = 3,  ///< subtitles stored as pictures
    SubtitlesText = 4,   ///< subtitles stored as text
};

/// The kind of a group of files, as an open-file dialog tells them apart; everybody knows it as IFormatFile::MediaType.
enum class FileMediaType : std::int32_t {
    AllFiles = 0,   ///< files of any kind
    Video = 1,      ///< video files
    Audio = 2,      ///< audio files
    Subtitles = 3,  ///< subtitle files
    Images = 4,     ///< still pictures and animations
};

}  // namespace Quenzo::Conf
