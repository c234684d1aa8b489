#pragma once

#include <foundation/Export.h>

#include <string>

/// Names of codecs and containers to show to people. Identifiers are compared byte for byte. Both functions may be
/// called from any thread.
namespace Quenzo::Conf {

/// Sets the display name of a codec id and returns true. An id without a name of its own shows as its text behind
/// "CODEC_ID_" with blanks for underscores, and as "PCM" when that begins with "PCM_" or "ADPCM_"; that goes for ids
/// that no catalogue knows, too. Returns false, and leaves the name alone, for CODEC_ID_AUTO and for a text that does
/// not begin with "CODEC_ID_".
QUENZO_API bool TranslateCodecId(const std::string& codecId, std::string& displayName);

/// Sets the display name of a container and returns true. Returns false, and leaves the name alone, for a container
/// without a name: none is derived.
QUENZO_API bool TranslateFormatId(const std::string& formatId, std::string& displayName);

}  // namespace Quenzo::Conf
