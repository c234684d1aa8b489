#pragma once

#include <tools/JsonText.h>

#include <Conf/Interfaces/IFormatCodec.h>
#include <foundation/RefCount.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Tools {

/// Collects what has no place in a description, as lines such as "stream 0: chroma_location left".
class NotMapped {
public:
    NotMapped(std::vector<std::string>& lines, std::string subject) : lines_(lines), subject_(std::move(subject)) {}

    void Add(const std::string& what, const std::string& value);

private:
    std::vector<std::string>& lines_;
    std::string subject_;
};

/// What a stream's own members do not say of it.
struct StreamPlace {
    std::uint32_t index;  ///< its number in the file
    bool isInPicture;     ///< the file is a picture, so its video is a still one
};

/// The description of a stream from what ffprobe says of it; null for a stream that is neither video, audio nor
/// subtitles.
SP<Conf::IFormatCodec> DescribeStream(const Members& stream, const StreamPlace& place, NotMapped& notMapped);

}  // namespace Quenzo::Tools
