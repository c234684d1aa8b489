#include <Conf/Interfaces/AppleUTI.h>

#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/Kept.h>
#include <Conf/Interfaces/Log.h>
#include <Conf/Interfaces/TextIndex.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>

#include <fmt/compile.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Quenzo::Conf::UTI {

namespace {

using Detail::Column;
using Detail::FileText;
using Detail::Keep;
using Detail::TextIndex;
using Detail::VideoText;

struct Row {
    Detail::FormatId uti;
    Detail::FormatId format;
    Detail::CodecId codec;
};

constexpr auto kStillImages = std::to_array<Row>({
#define QUENZO_UTI(uti, format, codec) {uti, FileText::format, VideoText::codec},
#define QUENZO_UTI_RAW(format) {FileText::format, FileText::format, VideoText::CODEC_ID_LIBRAW},
#define QUENZO_UTI_KNOWN_ONLY(uti) {uti, {}, {}},
#include <Conf/Interfaces/StillImageUTIs.def>
});

constexpr auto kAnimatedImages = std::to_array<Row>({
    {"public.png", FileText::FORMAT_APNG, VideoText::CODEC_ID_APNG},
    {"public.jpeg-xl", FileText::FORMAT_AJPEGXL, {}},
    {"org.webmproject.webp", FileText::FORMAT_AWEBP, {}},
});

// The level of verbose logging that speaks of unknown identifiers.
constexpr int kUnknownLevel = 30;

// The container and the codec.
using Answer = std::pair<std::string, std::string>;

// The answers to the identifiers of a table, in its order.
template <std::size_t N>
std::array<Answer, N> AnswersOf(const std::array<Row, N>& rows) {
    std::array<Answer, N> answers;
    std::transform(rows.begin(), rows.end(), answers.begin(),
                   [](const Row& row) { return Answer(row.format, row.codec); });
    return answers;
}

// The answer to any unknown identifier.
const Answer& NoAnswer() {
    static const Answer& none = Keep(Answer());
    return none;
}

const Answer& FindStillImage(const std::string& uti) {
    static constexpr TextIndex<Column<kStillImages, &Row::uti>> index;
    static const auto& answers = Keep(AnswersOf(kStillImages));
    const std::size_t place = index.Find(uti);
    if (place < answers.size()) {
        return answers[place];
    }
    if (Detail::Log().isVerbose(__FILE__, kUnknownLevel)) {
        Detail::Log().inform(__FILE__, __LINE__,
                             fmt::format(FMT_COMPILE("Unknown Universal Type Identifier: '{}'"), uti));
    }
    return NoAnswer();
}

const Answer& FindAnimatedImage(const std::string& uti) {
    static constexpr TextIndex<Column<kAnimatedImages, &Row::uti>> index;
    static const auto& answers = Keep(AnswersOf(kAnimatedImages));
    const std::size_t place = index.Find(uti);
    return place < answers.size() ? answers[place] : NoAnswer();
}

}  // namespace

const std::string& FindFormatID(const std::string& uti) { return FindStillImage(uti).first; }

const std::string& FindCodecID(const std::string& uti) { return FindStillImage(uti).second; }

const std::string& FindAnimatedFormatID(const std::string& uti) { return FindAnimatedImage(uti).first; }

const std::string& FindAnimatedCodecID(const std::string& uti) { return FindAnimatedImage(uti).second; }

}  // namespace Quenzo::Conf::UTI
