// Covers the tables that are made when they are first asked for: eight threads ask for all of them at the same time,
// before anybody else has, each in an order of its own, and all get the answers that one thread gets later. One test,
// in a program of its own: whatever ran before it would have made the tables already.

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TranslationUtils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <latch>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

// The object that was returned, null when it was a value, and all that it holds.
struct Answer {
    const void* object = nullptr;
    std::string text;
};

using Strings = std::vector<std::string>;

std::string Text(const std::string& text) { return text; }

std::string Text(const Strings& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += text + '\n';
    }
    return all;
}

std::string Text(const std::unordered_set<std::string>& texts) {
    Strings sorted(texts.begin(), texts.end());
    std::sort(sorted.begin(), sorted.end());
    return Text(sorted);
}

std::string Text(const std::vector<std::pair<std::string, std::string>>& pairs) {
    std::string all;
    for (const auto& [first, second] : pairs) {
        all.append(first).append("=").append(second).append("\n");
    }
    return all;
}

template <typename T>
Answer Object(const T& object) {
    return {&object, Text(object)};
}

Answer Value(std::string text) { return {nullptr, std::move(text)}; }

Answer Value(bool yes) { return Value(std::string(yes ? "yes" : "no")); }

std::string Offered() {
    std::string all;
    for (const auto& [kind, group] : GetSupportedFormats()) {
        all.append(std::to_string(static_cast<int>(kind))).append(group).append("\n");
    }
    return all;
}

template <typename Translate>
Answer Translated(Translate translate, const std::string& id) {
    std::string name;
    return translate(id, name) ? Value(name) : Value(std::string("no name"));
}

struct Question {
    std::string_view name;
    Answer (*ask)();
};

#define ASK(question)                      \
    {                                      \
#question, [] { return question; } \
    }

constexpr auto kQuestions = std::to_array<Question>({
    ASK(Object(GetAllVideoCodecs())),
    ASK(Object(GetAllAudioCodecs())),
    ASK(Object(GetAllSubtitleCodecs())),
    ASK(Object(GetAllCodecIds())),
    ASK(Object(GetRAWImageFormatList())),
    ASK(Object(GetHEIFImageFormatList())),
    ASK(Object(GetQZPFormatList())),
    ASK(Object(GetCDFormatList())),
    ASK(Object(GetAudioContainerList())),
    ASK(Object(GetTextSubtitleContainerList())),
    ASK(Object(GetDisabledFormatParserList())),
    ASK(Object(GetDisabledFormatMuxerList())),
    ASK(Object(GetDisabledDecoderList())),
    ASK(Object(GetDisabledEncoderList())),
    ASK(Object(GetBlackListedEncoders())),
    ASK(Object(GetBlackListedDecoders())),
    ASK(Object(GetExternalDecoderList())),
    ASK(Object(GetExternalEncoderList())),
    ASK(Object(GetMuxerImplList())),
    ASK(Object(GetParserImplList())),
    ASK(Object(GetDecoderImplList())),
    ASK(Object(GetEncoderImplList())),
    ASK(Object(GetAllImplList())),
    ASK(Object(GetProprietaryCodecs())),
    ASK(Object(GetImageContainerSet(AnimatedImages::Exclude))),
    ASK(Object(GetImageContainerSet(AnimatedImages::Include))),
    ASK(Object(GetFormatExtensionList())),
    ASK(Value(IsVideoCodec("CODEC_ID_H264"))),
    ASK(Value(IsAudioCodec("CODEC_ID_AAC"))),
    ASK(Value(IsSubtitleCodec("CODEC_ID_SRT"))),
    ASK(Value(IsAudioContainer("flac"))),
    ASK(Value(IsTextSubtitleContainer("srt"))),
    ASK(Value(IsProprietaryCodec("CODEC_ID_MP2"))),
    ASK(Value(IsExternalDecoder("CODEC_ID_H264"))),
    ASK(Value(IsExternalEncoder("CODEC_ID_H264"))),
    ASK(Value(IsImageContainer("gif", AnimatedImages::Include))),
    ASK(Value(IsAudioBitrateRequired("CODEC_ID_AAC"))),
    ASK(Value(GetDisplayCodecName("CODEC_ID_H265"))),
    ASK(Value(Offered())),
    ASK(Value(Text(GetSupportedFormatExtensions("All images")))),
    ASK(Value(GetFormatExtentionTip("All Audio"))),
    ASK(Object(GetExtensionsByFormat("jpeg"))),
    ASK(Object(GetExtensionsByFormat("unknown"))),
    ASK(Object(GetFormatsByExtension("ORF"))),
    ASK(Object(GetFormatsByExtension("unknown"))),
    ASK(Object(GetDefaultFileExtensionForContainer("matroska"))),
    ASK(Translated(TranslateCodecId, "CODEC_ID_WMAV2")),
    ASK(Translated(TranslateFormatId, "mpegts")),
    ASK(Object(UTI::FindFormatID("public.heic"))),
    ASK(Object(UTI::FindCodecID("public.heic"))),
    ASK(Object(UTI::FindFormatID("unknown"))),
    ASK(Object(UTI::FindAnimatedFormatID("public.png"))),
    ASK(Object(UTI::FindAnimatedCodecID("public.png"))),
    ASK(Object(UTI::FindAnimatedFormatID("unknown"))),
    ASK(Value(std::to_string(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 30)))),
});

#undef ASK

constexpr std::size_t kThreads = 8;

using Answers = std::array<Answer, kQuestions.size()>;

// All questions; the first thread asks them in their order, each other in one of its own.
std::array<std::size_t, kQuestions.size()> OrderOf(std::size_t thread) {
    std::array<std::size_t, kQuestions.size()> order;
    std::iota(order.begin(), order.end(), 0U);
    if (thread > 0) {
        std::mt19937 random(static_cast<unsigned>(thread));
        std::shuffle(order.begin(), order.end(), random);
    }
    return order;
}

std::array<Answers, kThreads> AskOnAllThreads() {
    std::array<Answers, kThreads> answers;
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&start, &own = answers.at(thread), order = OrderOf(thread)] {
            start.arrive_and_wait();
            for (const std::size_t question : order) {
                own.at(question) = kQuestions.at(question).ask();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return answers;
}

void ExpectAnswer(const Answer& answer, const Answer& expected, std::string_view question) {
    EXPECT_EQ(answer.object, expected.object) << question;
    EXPECT_EQ(answer.text, expected.text) << question;
}

TEST(ConcurrentTablesTest, FirstUse_OnEightThreadsGivesEachTheSameAnswers) {
    const std::array<Answers, kThreads> answers = AskOnAllThreads();
    for (std::size_t question = 0; question < kQuestions.size(); ++question) {
        const Answer expected = kQuestions.at(question).ask();
        for (const Answers& own : answers) {
            ExpectAnswer(own.at(question), expected, kQuestions.at(question).name);
        }
    }
    // That the answers are right is tested elsewhere; these show that they are there.
    EXPECT_EQ(answers[0][0].text.substr(0, 40), "CODEC_ID_MPEG1VIDEO\nCODEC_ID_MPEG2VIDEO\n");
    EXPECT_EQ(answers[7][kQuestions.size() - 1].text, "9109810");
}

}  // namespace
}  // namespace Quenzo::Conf
