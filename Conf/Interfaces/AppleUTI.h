#pragma once

#include <foundation/Export.h>

#include <string>

/// How a picture is opened of which only its Uniform Type Identifier is known, the reverse-domain name that the
/// platform gives a type of file, such as "public.jpeg".
///
/// Identifiers are compared byte for byte. A type that the system cannot open gives an empty text. A reference stays
/// valid until the library is unloaded. All functions may be called from any thread.
namespace Quenzo::Conf::UTI {

/// The container and the video codec with which a still picture of that type is opened (IFormatFile::FORMAT_ and
/// IFormatCodecVideo::CODEC_ID_ values). A type that is not in the table is logged, at verbose level 30: "Unknown
/// Universal Type Identifier: 'x.y'". Types that the system knows but cannot open are not.
QUENZO_API const std::string& FindFormatID(const std::string& uti);
QUENZO_API const std::string& FindCodecID(const std::string& uti);

/// The same for the animation that a file of that type may hold. Nothing is logged. The codec of most is empty: the
/// reader of the container decides.
QUENZO_API const std::string& FindAnimatedFormatID(const std::string& uti);
QUENZO_API const std::string& FindAnimatedCodecID(const std::string& uti);

}  // namespace Quenzo::Conf::UTI
