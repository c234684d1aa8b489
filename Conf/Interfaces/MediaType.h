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

}  // namespace Quenzo::Conf
