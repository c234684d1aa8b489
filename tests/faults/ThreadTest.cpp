// Covers what several threads may do at once: take and drop references, clone and read what nobody changes, raise and
// catch failures, and ask the log. Run under ThreadSanitizer too, which alone sees what goes wrong without harm. The
// tables are in tests/Conf/ConcurrentTablesTest.cpp.

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/IFormatFile.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TreePreset.h>
#include <tests/Conf/GraphSupport.h>
#include <tests/faults/JobDocuments.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <exception>
#include <latch>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;

constexpr std::size_t kThreads = 8;

// Calls the function with each thread's number, on all threads at the same time, and waits.
template <typename Call>
void OnAllThreads(Call call) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([i, call, &start]() mutable {
            start.arrive_and_wait();
            call(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

std::atomic<int> destroyed = 0;

// A counted class of the library whose end can be seen.
template <typename T>
class Watched : public T {
public:
    Watched() = default;
    ~Watched() override { ++destroyed; }
};

class WatchedUndefined : public IFormatCodec {
public:
    WatchedUndefined() : IFormatCodec("") {}
    ~WatchedUndefined() override { ++destroyed; }
};

// All threads let go of it, and who made it does so in between.
void ShareAndDrop(SP<const IRefCountable> object) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&start, mine = object]() mutable {
            start.arrive_and_wait();
            for (int round = 0; round < 50; ++round) {
                const SP<const IRefCountable> copy = mine;
                const SP<const IRefCountable> another = copy;
                EXPECT_GE(another->GetRefCount(), 3);
            }
            mine.reset();
        });
    }
    object.reset();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

template <typename T>
void ExpectDestroyedOnce() {
    destroyed = 0;
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        ShareAndDrop(SP<const IRefCountable>(new T()));
        EXPECT_EQ(destroyed, round + 1);
    }
}

TEST(ThreadTest, References_TheLastThreadDestroysTheObjectOnce) {
    ExpectDestroyedOnce<WatchedUndefined>();
    ExpectDestroyedOnce<Watched<IFormatCodecVideo>>();
    ExpectDestroyedOnce<Watched<IFormatCodecAudio>>();
    ExpectDestroyedOnce<Watched<IFormatCodecSubtitle>>();
    ExpectDestroyedOnce<Watched<ITranscodingMetaGraph>>();
}

// Nothing shows their end but the sanitizers, should it come twice or not at all.
TEST(ThreadTest, References_OfClassesThatNobodyDerivesFrom) {
    for (int round = 0; round < 20; ++round) {
        ShareAndDrop(IFormatFile::Create());
        ShareAndDrop(Blob::Create({1, 2, 3}));
        ShareAndDrop(TreePreset::Create(Property("preset")));
        ShareAndDrop(Core::MemoryInput::Create("a text that is too long to stand in a string object"));
        ShareAndDrop(Core::MemoryOutput::Create());
        ShareAndDrop(Core::FileInput::Create(QUENZO_TEST_JOBS "/two-sources.json"));
        ShareAndDrop(Core::FileOutput::Create("/dev/null"));
    }
}

SP<IFormatCodecVideo> MakeVideo() {
    auto video = IFormatCodecVideo::Create();
    video->InitByPixelAspect(1920, 1080, 1, 1);
    video->SetFrameRate(30000, 1001);
    video->SetDisplayMatrix(DisplayMatrix(ImageOrientation::Rotated90));
    video->SetPrivateData(Blob::Create({1, 2, 3}));
    return video;
}

TEST(ThreadTest, Clones_OfOneDescription) {
    const SP<IFormatCodecVideo> video = MakeVideo();
    OnAllThreads([&video](std::size_t thread) {
        for (unsigned round = 0; round < 100; ++round) {
            const SP<IFormatCodecVideo> clone = video->Clone();
            const SP<IFormatCodec> base = video->CloneBase();
            EXPECT_TRUE(clone->Compare(video) && base->Compare(clone));
            EXPECT_EQ(clone->GetPrivateData()->GetSize(), 3U);
            EXPECT_EQ(video->GetDisplayMatrix(), DisplayMatrix(ImageOrientation::Rotated90));
            clone->SetFrameRate(static_cast<unsigned>(thread) + 1, round + 1);
            EXPECT_FALSE(clone->Compare(video));
        }
    });
    EXPECT_EQ(video->GetRefCount(), 1);
    EXPECT_EQ(video->GetPrivateData()->GetRefCount(), 2);
    EXPECT_EQ(video->GetProperty(), MakeVideo()->GetProperty());
}

// One of several failures, and what it tells.
template <typename Call>
std::string ReportOf(Call call) {
    try {
        call();
    } catch (const boost::exception& failure) {
        const auto* const callStack = boost::get_error_info<Exception::TagCallStack>(failure);
        const auto* const standard = dynamic_cast<const std::exception*>(&failure);
        return std::string(standard->what()) + '\n' + (callStack != nullptr ? *callStack : "no call stack");
    }
    return "nothing was raised";
}

using Reports = std::array<std::string, 5>;

Reports AllReports() {
    const Property tree("tree");
    const Graph graph = MakeGraph(2, {{1, 2}});
    return {ReportOf([&] { static_cast<void>(tree["child"]); }), ReportOf([&] { static_cast<void>(tree.GetBool()); }),
            ReportOf([&] { graph->AddLink(1, 2, tree); }), ReportOf([] { IsAudioBitrateRequired("unknown"); }),
            ReportOf([] { GetSupportedFormatExtensions("unknown"); })};
}

TEST(ThreadTest, Failures_RaisedAtTheSameTimeTellTheSame) {
    std::array<std::vector<Reports>, kThreads> reports;
    OnAllThreads([&reports](std::size_t thread) {
        for (int round = 0; round < 50; ++round) {
            reports.at(thread).push_back(AllReports());
        }
    });
    const Reports& first = reports[0][0];
    EXPECT_TRUE(first[0].starts_with("\"tree\" has no child \"child\"\n0# ")) << first[0];
    EXPECT_TRUE(first[4].starts_with("Unknown group id\n0# ")) << first[4];
    for (const std::vector<Reports>& own : reports) {
        for (const Reports& each : own) {
            EXPECT_EQ(each, first);
        }
    }
}

TEST(ThreadTest, OneFailure_IsReadOnAllThreads) {
    std::exception_ptr failure;
    try {
        IsAudioBitrateRequired("unknown");
    } catch (...) {
        failure = std::current_exception();
    }
    ASSERT_NE(failure, nullptr);
    const std::string expected = ReportOf([&] { std::rethrow_exception(failure); });
    OnAllThreads([&failure, &expected](std::size_t) {
        for (int round = 0; round < 100; ++round) {
            EXPECT_EQ(ReportOf([&] { std::rethrow_exception(failure); }), expected);
        }
    });
}

// One thread loads the logging library, another finds it loaded, and each uses it at once. An unknown identifier makes
// the library ask whether a remark is wanted; the known one makes the table, so that no thread waits for another at it.
TEST(ThreadTest, Log_IsAskedForFirstOnAllThreads) {
    EXPECT_FALSE(UTI::FindFormatID("public.heic").empty());
    OnAllThreads([](std::size_t) { EXPECT_EQ(UTI::FindFormatID("unknown"), ""); });
}

// All that can be asked of a graph, as one text.
std::string AnswersOf(const SP<const ITranscodingMetaGraph>& graph) {
    Ids ids;
    graph->Inputs(ids);
    graph->Outputs(ids);
    graph->VisitNodes([&](long long node, const Property&) {
        graph->Inputs(node, ids);
        graph->Outputs(node, ids);
        ids.push_back(static_cast<long long>((*graph)[node].Count()));
        const Ids path = graph->FindPath(node, graph->GetNodesCount());
        ids.insert(ids.end(), path.begin(), path.end());
    });
    graph->VisitLinks([&](long long link, long long from, long long to, const Property& tree) {
        ids.push_back(link);
        ids.push_back(graph->GetLink(from, to) == tree ? 1 : 0);
    });
    for (const TopologyFinding& finding : graph->ExamineTopology()) {
        ids.push_back(static_cast<long long>(finding.groups.size()));
    }
    ids.push_back(graph->TopologyIsValid() ? 1 : 0);
    const auto document = Core::MemoryOutput::Create();
    graph->Save(document);
    const auto drawing = Core::MemoryOutput::Create();
    graph->SaveInToDot(drawing);
    return ::testing::PrintToString(ids) + document->GetBytes() + drawing->GetBytes();
}

TEST(ThreadTest, Graph_IsReadOnAllThreads) {
    for (const char* name : Quenzo::Testing::kJobDocuments) {
        const Graph loaded = ITranscodingMetaGraph::Create();
        LoadText(loaded, Quenzo::Testing::JobDocument(name));
        const SP<const ITranscodingMetaGraph> graph = loaded;
        const std::string expected = AnswersOf(graph);
        OnAllThreads([&graph, &expected](std::size_t) {
            for (int round = 0; round < 20; ++round) {
                EXPECT_EQ(AnswersOf(graph), expected);
            }
        });
    }
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
