#include <tests/docs/VocabularyRows.h>

#include <array>

namespace Quenzo::Docs {

namespace {

// Each file of rows uses up the macros. The blank lines keep the order of the includes.
// NOLINTBEGIN(readability-duplicate-include)

// How the rows of codecs say whether a catalogue offers them.
constexpr bool Listed = true;
constexpr bool Unlisted = false;

constexpr auto kFormat = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/FormatKeys.def>
});

constexpr auto kFile = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/FileKeys.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/FileWords.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/FileFormats.def>
});

constexpr auto kCodec = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/CodecKeys.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/CodecIds.def>
});

constexpr auto kVideo = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/VideoKeys.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
});

constexpr auto kAudio = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/AudioKeys.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
});

constexpr auto kSubtitle = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/SubtitleKeys.def>

#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>
});

constexpr auto kPreset = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/Preset.def>
});

constexpr auto kGraph = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/Graph.def>
});

constexpr auto kConstraint = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/Constraint.def>
});

constexpr auto kImplNames = std::to_array<Row>({
#include <tests/docs/RowsOf.inc>

#include <Conf/Interfaces/Vocabulary/ImplNames.def>
});

// NOLINTEND(readability-duplicate-include)

constexpr auto kOwners = std::to_array<Owner>({
    {"IFormat", "every description", kFormat},
    {"IFormatFile", "the description of a file", kFile},
    {"IFormatCodec", "the description of a stream, whatever its kind", kCodec},
    {"IFormatCodecVideo", "the description of a video stream", kVideo},
    {"IFormatCodecAudio", "the description of an audio stream", kAudio},
    {"IFormatCodecSubtitle", "the description of a subtitle stream", kSubtitle},
    {"IPreset", "a preset", kPreset},
    {"ITranscodingMetaGraph", "the trees of a job", kGraph},
    {"IPropertyConstraint", "rules for the values of properties", kConstraint},
    {"Proc::ImplNames", "the back ends that a task may be bound to", kImplNames},
});

}  // namespace

std::span<const Owner> Owners() { return kOwners; }

}  // namespace Quenzo::Docs
