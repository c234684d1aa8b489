// The one unit of the library that runs code at load.
//
// It defines the string constants, all of them here and each of them once. Their priority makes them complete before
// any other unit's load-time code reads them, in whatever order the units are linked, shared or static: a table that
// copies a constant at load would otherwise copy an empty string and nobody would notice. 101 is the first priority
// that is not reserved for the implementation; code without a priority runs after all code that has one.

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/ImplNames.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>
#include <Conf/Interfaces/TableRows.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <Conf/Interfaces/Vocabulary/ConstraintVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>
#include <string>

namespace Quenzo {

#define QUENZO_TEXT(name, value) [[gnu::init_priority(101)]] const std::string QUENZO_OWNER::name = value;

#define QUENZO_OWNER Conf::FormatVocabulary
#include <Conf/Interfaces/Vocabulary/FormatKeys.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::CodecVocabulary
#include <Conf/Interfaces/Vocabulary/CodecIds.def>
#include <Conf/Interfaces/Vocabulary/CodecKeys.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::VideoVocabulary
#include <Conf/Interfaces/Vocabulary/VideoCodecIds.def>
#include <Conf/Interfaces/Vocabulary/VideoKeys.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::AudioVocabulary
#include <Conf/Interfaces/Vocabulary/AudioCodecIds.def>
#include <Conf/Interfaces/Vocabulary/AudioKeys.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::SubtitleVocabulary
#include <Conf/Interfaces/Vocabulary/SubtitleCodecIds.def>
#include <Conf/Interfaces/Vocabulary/SubtitleKeys.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::FileVocabulary
#include <Conf/Interfaces/Vocabulary/FileFormats.def>
#include <Conf/Interfaces/Vocabulary/FileKeys.def>
#include <Conf/Interfaces/Vocabulary/FileWords.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::PresetVocabulary
#include <Conf/Interfaces/Vocabulary/Preset.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::ConstraintVocabulary
#include <Conf/Interfaces/Vocabulary/Constraint.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Conf::GraphVocabulary
#include <Conf/Interfaces/Vocabulary/Graph.def>
#undef QUENZO_OWNER

#define QUENZO_OWNER Proc::ImplNames
#include <Conf/Interfaces/Vocabulary/ImplNames.def>
#undef QUENZO_OWNER

#undef QUENZO_TEXT

#include <Conf/Interfaces/PixelFormatTable.inc>
#include <Conf/Interfaces/SampleFormatTable.inc>

namespace Conf {

// NOLINTBEGIN(cert-err58-cpp): nobody could catch it, but a default-constructed exception has nothing to throw.
[[gnu::init_priority(101)]] const ConfException exportDummyException;
[[gnu::init_priority(101)]] const FormatException exportDummyException1;
[[gnu::init_priority(101)]] const ProfileException exportDummyException2;
[[gnu::init_priority(101)]] const LinkExists exportDummyException3;
[[gnu::init_priority(101)]] const LinkNotFound exportDummyException4;
[[gnu::init_priority(101)]] const BadJson exportDummyException5;
[[gnu::init_priority(101)]] const NodeNotFound exportDummyException6;
[[gnu::init_priority(101)]] const PresetException exportDummyException7;
[[gnu::init_priority(101)]] const ConstraintException exportDummyException8;
[[gnu::init_priority(101)]] const ConstraintIsNotApplicableForTypeException exportDummyException9;
[[gnu::init_priority(101)]] const CheckedPropertyHasDifferentTypeException exportDummyException10;
[[gnu::init_priority(101)]] const HelperException exportDummyException11;
// NOLINTEND(cert-err58-cpp)

}  // namespace Conf

}  // namespace Quenzo
