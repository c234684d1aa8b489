// Look-ups in the fixed tables: pixel formats by id and by name, the planes of a frame, channel layouts and sample
// formats by text id, and a look-up that fails. Times are for one question.

#include <bench/Questions.h>
#include <bench/peers/PerfectHash.h>
#include <bench/peers/TableFloors.h>
#ifdef QUENZO_BENCH_GSTREAMER
#include <bench/peers/VideoFormats.h>
#endif

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/PixelFormatDescription.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo::Bench {

namespace {

std::vector<PixFmt> AllIds() {
    return {PixFmtDescription::s_supportedFormats.begin(), PixFmtDescription::s_supportedFormats.end()};
}

std::vector<std::string> AllNames() {
    const auto& formats = PixFmtDescription::s_list;
    std::vector<std::string> names(formats.size());
    std::transform(formats.begin(), formats.end(), names.begin(), std::mem_fn(&PixFmtDescription::name));
    return names;
}

// Answers each id and each name with the description of that very format.
template <typename Question, typename Answer>
void VerifyFormats(const std::vector<Question>& questions, Answer answer) {
    Verify(questions.size() == 58, "the number of pixel formats");
    for (std::size_t i = 0; i < questions.size(); ++i) {
        Verify(answer(questions[i]) == &PixFmtDescription::s_list[i], "a pixel format's description");
    }
}

void PixelFormatById(benchmark::State& state) {
    const auto answer = [](PixFmt id) { return &PixFmtDescription::Find(id); };
    VerifyFormats(AllIds(), answer);
    AskInTurn(state, AllIds(), answer);
}

void PixelFormatById_Floor(benchmark::State& state) {
    const IdFloor floor;
    const auto answer = [&floor](PixFmt id) { return floor.Find(id); };
    VerifyFormats(AllIds(), answer);
    AskInTurn(state, AllIds(), answer);
}

void PixelFormatByName(benchmark::State& state) {
    const auto answer = [](const std::string& name) { return &PixFmtDescription::Find(name); };
    VerifyFormats(AllNames(), answer);
    AskInTurn(state, AllNames(), answer);
}

void PixelFormatByName_Floor(benchmark::State& state) {
    const NameFloor floor;
    const auto answer = [&floor](const std::string& name) { return floor.Find(name); };
    Verify(floor.Find("YUV42OP") == nullptr, "a name that is not there");
    VerifyFormats(AllNames(), answer);
    AskInTurn(state, AllNames(), answer);
}

struct Frame {
    std::int32_t width = 1920;
    std::int32_t height = 1080;
};

PlaneSizes SizesOf(const PixFmtDescription& format, const Frame& frame) {
    PlaneSizes sizes = {};
    for (std::uint8_t plane = 0; plane < format.planes; ++plane) {
        sizes[plane] = format.GetPlanFullSize(frame.width, frame.height, plane);
    }
    return sizes;
}

void VerifySizes() {
    const auto verify = [](PixFmt id, const PlaneSizes& sizes) {
        Verify(SizesOf(PixFmtDescription::Find(id), Frame()) == sizes, "the sizes of a frame's planes");
    };
    verify(PixFmt::YUV420P, {2073600, 518400, 518400, 0});
    verify(PixFmt::NV12, {2073600, 1036800, 0, 0});
    verify(PixFmt::RGB24, {6220800, 0, 0, 0});
    verify(PixFmt::PAL8, {2073600, 1024, 0, 0});
    verify(PixFmt::YUVA444P, {2073600, 2073600, 2073600, 2073600});
}

std::vector<const PixFmtDescription*> AllFormats() {
    std::vector<const PixFmtDescription*> formats(PixFmtDescription::s_list.size());
    std::iota(formats.begin(), formats.end(), PixFmtDescription::s_list.data());
    return formats;
}

void FramePlanes(benchmark::State& state) {
    VerifySizes();
    Frame frame;
    benchmark::DoNotOptimize(frame);
    AskInTurn(state, AllFormats(), [&frame](const PixFmtDescription* format) { return SizesOf(*format, frame); });
}

void FramePlanes_TotalOnly(benchmark::State& state) {
    Frame frame;
    Verify(PixFmtDescription::Find(PixFmt::YUV420P).GetAllPlanesFullSize(frame.width, frame.height) == 3110400,
           "the size of a frame");
    benchmark::DoNotOptimize(frame);
    AskInTurn(state, AllFormats(), [&frame](const PixFmtDescription* format) {
        return format->GetAllPlanesFullSize(frame.width, frame.height);
    });
}

void FramePlanes_Floor(benchmark::State& state) {
    Frame frame;
    std::vector<PlaneFloor> floors;
    for (const PixFmtDescription& format : PixFmtDescription::s_list) {
        floors.emplace_back(format);
        Verify(floors.back().Sizes(frame.width, frame.height) == SizesOf(format, frame), "the planes of a format");
    }
    benchmark::DoNotOptimize(frame);
    AskInTurn(state, floors, [&frame](const PlaneFloor& floor) { return floor.Sizes(frame.width, frame.height); });
}

template <typename Rows>
std::vector<std::string> TextIds(const Rows& rows) {
    std::vector<std::string> texts(rows.size());
    std::transform(rows.begin(), rows.end(), texts.begin(), [](const auto& row) { return row.textId; });
    return texts;
}

template <typename Record, typename Answer>
void AskForRows(benchmark::State& state, Answer answer) {
    for (const Record& row : Record::Enumerate()) {
        Verify(answer(row.textId) == &row, "the row of a text id");
    }
    AskInTurn(state, TextIds(Record::Enumerate()), answer);
}

template <typename Record>
void RowByTextId(benchmark::State& state) {
    AskForRows<Record>(state, [](const std::string& text) { return &Record::Find(text); });
}

template <typename Record>
void RowByTextId_LinearScan(benchmark::State& state) {
    const ScanFloor floor(Record::Enumerate());
    AskForRows<Record>(state, [&floor](const std::string& text) { return &Record::Enumerate()[floor.Find(text)]; });
}

template <typename Record>
void RowByTextId_Floor(benchmark::State& state) {
    const std::vector<std::string> texts = TextIds(Record::Enumerate());
    const PerfectHash hash({texts.begin(), texts.end()});
    AskForRows<Record>(state, [&hash](const std::string& text) { return &Record::Enumerate()[hash.Find(text)]; });
}

constexpr const char* kFailure = "Unknown pixel format id: 1000";

void FailedLookup(benchmark::State& state) {
    int failures = 0;
    while (state.KeepRunning()) {
        try {
            benchmark::DoNotOptimize(&PixFmtDescription::Find(static_cast<PixFmt>(1000)));
        } catch (const std::logic_error& failure) {
            failures += static_cast<int>(std::string_view(failure.what()) == kFailure);
        }
    }
    Verify(failures == state.iterations(), "a look-up that fails says so");
}

[[gnu::noinline]] void Fail(int id) { throw std::logic_error("Unknown pixel format id: " + std::to_string(id)); }

void FailedLookup_Floor(benchmark::State& state) {
    int failures = 0;
    while (state.KeepRunning()) {
        try {
            Fail(1000);
        } catch (const std::logic_error& failure) {
            failures += static_cast<int>(std::string_view(failure.what()) == kFailure);
        }
    }
    Verify(failures == state.iterations(), "a bare exception arrives");
}

BENCHMARK(PixelFormatById)->Name("PixelFormatById/Quenzo");
BENCHMARK(PixelFormatById_Floor)->Name("PixelFormatById/Floor");
BENCHMARK(PixelFormatByName)->Name("PixelFormatByName/Quenzo");
BENCHMARK(PixelFormatByName_Floor)->Name("PixelFormatByName/Floor");
BENCHMARK(FramePlanes)->Name("FramePlanes/Quenzo");
BENCHMARK(FramePlanes_TotalOnly)->Name("FramePlanes/QuenzoTotalOnly");
BENCHMARK(FramePlanes_Floor)->Name("FramePlanes/Floor");
#ifdef QUENZO_BENCH_GSTREAMER
BENCHMARK(VideoFormatById)->Name("PixelFormatById/GStreamer");
BENCHMARK(VideoFormatByName)->Name("PixelFormatByName/GStreamer");
BENCHMARK(VideoFramePlanes)->Name("FramePlanes/GStreamer");
#endif
BENCHMARK(RowByTextId<Conf::LayoutRecord>)->Name("LayoutByTextId/Quenzo");
BENCHMARK(RowByTextId_LinearScan<Conf::LayoutRecord>)->Name("LayoutByTextId/LinearScan");
BENCHMARK(RowByTextId_Floor<Conf::LayoutRecord>)->Name("LayoutByTextId/Floor");
BENCHMARK(RowByTextId<Conf::SampleFmtRecord>)->Name("SampleFormatByTextId/Quenzo");
BENCHMARK(RowByTextId_LinearScan<Conf::SampleFmtRecord>)->Name("SampleFormatByTextId/LinearScan");
BENCHMARK(RowByTextId_Floor<Conf::SampleFmtRecord>)->Name("SampleFormatByTextId/Floor");
BENCHMARK(FailedLookup)->Name("FailedLookup/Quenzo");
BENCHMARK(FailedLookup_Floor)->Name("FailedLookup/Floor");

}  // namespace

}  // namespace Quenzo::Bench

BENCHMARK_MAIN();
