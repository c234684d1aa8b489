#pragma once

#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <iosfwd>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

/// The catalogues: which codecs, containers and processing back ends there are, and to which class an identifier
/// belongs.
///
/// A catalogue is made when it is first asked for, by whichever thread, and never changes afterwards; the reference
/// stays valid until the library is unloaded. Its order is the order in which users are offered the entries.
/// Identifiers are compared byte for byte: case counts, and nothing is trimmed. A predicate is false for an identifier
/// that nobody knows. All functions may be called from any thread.
namespace Quenzo::Conf {

class IPreset;

/// Whether a catalogue of picture containers has those of animations too.
enum class AnimatedImages : int {
    Exclude = 0,
    Include = 1,  ///< the only value that includes them
};

/// The codecs of each kind. CODEC_ID_NONE closes the lists of video and of audio codecs. A few ids that have a constant
/// stand in no list: CODEC_ID_JPEG, CODEC_ID_VP7, CODEC_ID_CFHD, CODEC_ID_PSD, CODEC_ID_8SVX_RAW and CODEC_ID_AUTO.
QUENZO_API const std::vector<std::string>& GetAllVideoCodecs();
QUENZO_API const std::vector<std::string>& GetAllAudioCodecs();
QUENZO_API const std::vector<std::string>& GetAllSubtitleCodecs();

/// The video, the audio and the subtitle codecs, then the ids that belong to no kind of stream. CODEC_ID_NONE stands
/// there three times, once for each list that it closes.
QUENZO_API const std::vector<std::string>& GetAllCodecIds();

/// Containers of raw photographs, of HEIF pictures, of projects, of audio CDs, of audio alone, of text subtitles.
QUENZO_API const std::vector<std::string>& GetRAWImageFormatList();
QUENZO_API const std::vector<std::string>& GetHEIFImageFormatList();
QUENZO_API const std::vector<std::string>& GetQZPFormatList();
QUENZO_API const std::vector<std::string>& GetCDFormatList();
QUENZO_API const std::vector<std::string>& GetAudioContainerList();
QUENZO_API const std::vector<std::string>& GetTextSubtitleContainerList();

/// Containers that the system must not read or write, and codecs that it must not decode or encode.
QUENZO_API const std::vector<std::string>& GetDisabledFormatParserList();
QUENZO_API const std::vector<std::string>& GetDisabledFormatMuxerList();
QUENZO_API const std::vector<std::string>& GetDisabledDecoderList();
QUENZO_API const std::vector<std::string>& GetDisabledEncoderList();

/// Codecs that are never offered. The two lists hold the same and are lists of their own.
QUENZO_API const std::vector<std::string>& GetBlackListedEncoders();
QUENZO_API const std::vector<std::string>& GetBlackListedDecoders();

/// Codecs that a component outside the system handles: none. One list serves both questions.
QUENZO_API const std::vector<std::string>& GetExternalDecoderList();
QUENZO_API const std::vector<std::string>& GetExternalEncoderList();

/// The back ends (Proc::ImplNames) for each task. The last list is one of its own, not the union of the others: it
/// lacks LIBHEIF and APPLE, and holds codec back ends of Android and Apple that no other list names.
QUENZO_API const std::vector<std::string>& GetMuxerImplList();
QUENZO_API const std::vector<std::string>& GetParserImplList();
QUENZO_API const std::vector<std::string>& GetDecoderImplList();
QUENZO_API const std::vector<std::string>& GetEncoderImplList();
QUENZO_API const std::vector<std::string>& GetAllImplList();

/// Codecs that need a licence.
QUENZO_API const std::vector<std::string>& GetProprietaryCodecs();

/// The picture containers, with or without those of animations. Raw photographs are not among them.
QUENZO_API const std::unordered_set<std::string>& GetImageContainerSet(AnimatedImages animated);

/// Pairs of a container and an extension that its files have, without a dot. The first pair of a container holds the
/// extension that a new file gets.
QUENZO_API const std::vector<std::pair<std::string, std::string>>& GetFormatExtensionList();

/// Membership in the list of the same name. CODEC_ID_NONE counts as a video and as an audio codec, since it closes both
/// lists.
QUENZO_API bool IsVideoCodec(const std::string& codecId);
QUENZO_API bool IsAudioCodec(const std::string& codecId);
QUENZO_API bool IsSubtitleCodec(const std::string& codecId);
QUENZO_API bool IsAudioContainer(const std::string& container);
QUENZO_API bool IsTextSubtitleContainer(const std::string& container);
QUENZO_API bool IsProprietaryCodec(const std::string& codecId);
QUENZO_API bool IsExternalDecoder(const std::string& codecId);
QUENZO_API bool IsExternalEncoder(const std::string& codecId);

/// Whether the container holds pictures: those of GetImageContainerSet, and all raw photographs.
QUENZO_API bool IsImageContainer(const std::string& container, AnimatedImages animated);

/// Whether an audio codec has to be told a bit rate: not uncompressed PCM, and not FLAC or ALAC. Raises FormatException
/// for an id that is not in the list of audio codecs.
QUENZO_API bool IsAudioBitrateRequired(const std::string& codecId);

/// A short technical name of a common video codec, such as HEVC for CODEC_ID_H265; of any other id the id itself.
QUENZO_API std::string GetDisplayCodecName(std::string_view codecId);

/// Whether a preset has streams and all of them are audio, or video. Raise std::invalid_argument when there is no
/// preset.
QUENZO_API bool IsAudioOnlyPreset(const SP<const IPreset>& preset);
QUENZO_API bool IsVideoOnlyPreset(const SP<const IPreset>& preset);

/// The entries in order, joined by ", ".
QUENZO_API std::ostream& operator<<(std::ostream& stream, const std::vector<std::string>& catalogue);

}  // namespace Quenzo::Conf
