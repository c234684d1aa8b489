// Look-ups in the catalogues: whether a codec is listed, the containers of a file name's extension, and a bit rate for
// a codec. Times are for one question.

#include <bench/Questions.h>
#include <bench/Verify.h>
#include <bench/peers/PerfectHash.h>

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Quenzo::Bench {

namespace {

using Strings = std::vector<std::string>;

const Strings& Listed() { return Conf::GetAllVideoCodecs(); }

// Codecs of other kinds, which are not video codecs.
Strings NotListed() {
    Strings codecs = Conf::GetAllAudioCodecs();
    std::erase_if(codecs, [](const std::string& codec) { return Conf::IsVideoCodec(codec); });
    return codecs;
}

bool IsVideoCodecByScan(const std::string& codec) {
    return std::any_of(Listed().begin(), Listed().end(), [&codec](std::string_view listed) { return listed == codec; });
}

bool IsVideoCodecByHash(const std::string& codec) {
    static const PerfectHash hash({Listed().begin(), Listed().end()});
    return hash.Find(codec) != Listed().size();
}

void AskForCodecs(benchmark::State& state, const Strings& codecs, bool (*isVideoCodec)(const std::string&)) {
    Verify(std::all_of(Listed().begin(), Listed().end(), isVideoCodec), "a listed codec");
    const Strings others = NotListed();
    Verify(others.size() > 100 && std::none_of(others.begin(), others.end(), isVideoCodec), "a codec of another kind");
    AskInTurn(state, codecs, isVideoCodec);
}

void CodecListed(benchmark::State& state) { AskForCodecs(state, Listed(), Conf::IsVideoCodec); }
void CodecListed_LinearScan(benchmark::State& state) { AskForCodecs(state, Listed(), IsVideoCodecByScan); }
void CodecListed_Floor(benchmark::State& state) { AskForCodecs(state, Listed(), IsVideoCodecByHash); }
void CodecNotListed(benchmark::State& state) { AskForCodecs(state, NotListed(), Conf::IsVideoCodec); }
void CodecNotListed_LinearScan(benchmark::State& state) { AskForCodecs(state, NotListed(), IsVideoCodecByScan); }
void CodecNotListed_Floor(benchmark::State& state) { AskForCodecs(state, NotListed(), IsVideoCodecByHash); }

Strings Extensions() {
    Strings extensions;
    for (const auto& [format, extension] : Conf::GetFormatExtensionList()) {
        if (std::find(extensions.begin(), extensions.end(), extension) == extensions.end()) {
            extensions.push_back(extension);
        }
    }
    return extensions;
}

// What one would write with the standard library: the key is folded into a string of its own for each question.
class FoldingMap {
public:
    FoldingMap() {
        for (const auto& [format, extension] : Conf::GetFormatExtensionList()) {
            formats_[Folded(extension)].push_back(format);
        }
    }

    const Strings& Find(const std::string& extension) const {
        const auto found = formats_.find(Folded(extension));
        return found != formats_.end() ? found->second : none_;
    }

private:
    static std::string Folded(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        return text;
    }

    std::unordered_map<std::string, Strings> formats_;
    Strings none_;
};

template <typename Answer>
void AskForFormats(benchmark::State& state, Answer answer) {
    Verify(*answer("MP4") == *answer("mp4") && !answer("mp4")->empty(), "the containers of an extension");
    Verify(answer("no such")->empty(), "the containers of no extension");
    AskInTurn(state, Extensions(), answer);
}

void FormatByExtension(benchmark::State& state) {
    AskForFormats(state, [](const std::string& extension) { return &Conf::GetFormatsByExtension(extension); });
}

void FormatByExtension_FoldingMap(benchmark::State& state) {
    const FoldingMap map;
    AskForFormats(state, [&map](const std::string& extension) { return &map.Find(extension); });
}

void FormatByExtension_Floor(benchmark::State& state) {
    const Strings extensions = Extensions();
    const PerfectHash<true> hash({extensions.begin(), extensions.end()});
    std::vector<const Strings*> formats;
    for (const std::string& extension : extensions) {
        formats.push_back(&Conf::GetFormatsByExtension(extension));
    }
    const Strings none;
    formats.push_back(&none);
    AskForFormats(state, [&](const std::string& extension) { return formats[hash.Find(extension)]; });
}

void DefaultBitrate(benchmark::State& state) {
    const auto answer = [](const std::string& codec) { return Conf::GetDefVideoBitrate(codec, 1920, 1080, 25); };
    Verify(answer("CODEC_ID_H264") > 1000000, "the bit rate of a codec");
    AskInTurn(state, Listed(), answer);
}

BENCHMARK(CodecListed)->Name("CodecListed/Quenzo");
BENCHMARK(CodecListed_LinearScan)->Name("CodecListed/LinearScan");
BENCHMARK(CodecListed_Floor)->Name("CodecListed/Floor");
BENCHMARK(CodecNotListed)->Name("CodecNotListed/Quenzo");
BENCHMARK(CodecNotListed_LinearScan)->Name("CodecNotListed/LinearScan");
BENCHMARK(CodecNotListed_Floor)->Name("CodecNotListed/Floor");
BENCHMARK(FormatByExtension)->Name("FormatByExtension/Quenzo");
BENCHMARK(FormatByExtension_FoldingMap)->Name("FormatByExtension/FoldingMap");
BENCHMARK(FormatByExtension_Floor)->Name("FormatByExtension/Floor");
BENCHMARK(DefaultBitrate)->Name("DefaultBitrate/Quenzo");

}  // namespace

}  // namespace Quenzo::Bench
