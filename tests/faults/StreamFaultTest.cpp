// Covers streams that fail: an input that throws, or ends, at each byte of a document, and an output that throws at
// each byte. The exception reaches the caller as it was thrown, nothing leaks, and what was read into or written from
// is as it was.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <foundation/PropertySerializer.h>
#include <tests/Conf/GraphSupport.h>
#include <tests/faults/FailingMemory.h>
#include <tests/faults/JobDocuments.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace {

bool hasBuffers = true;

}  // namespace

// Stands in for the C library's, which fails when there is no memory for the file's buffer.
extern "C" std::FILE* fdopen(int descriptor, const char* mode) noexcept {
    if (!hasBuffers) {
        errno = ENOMEM;
        return nullptr;
    }
    static auto* const real = reinterpret_cast<std::FILE* (*)(int, const char*)>(dlsym(RTLD_NEXT, "fdopen"));
    return real(descriptor, mode);
}

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Core::PropertyException;
using Core::PropertySerializer;
using Quenzo::Testing::JobDocument;
using Quenzo::Testing::kJobDocuments;
using Quenzo::Testing::LiveBlocks;

// What the devices of these tests throw: a class that the library has never heard of.
struct DeviceError {
    std::size_t position;
};

enum class At { Throws, Ends };

// States the size of all its bytes, and breaks off before the one at `limit`.
class BrokenInput : public RefCounted<Core::IDataInput> {
public:
    BrokenInput(std::string bytes, std::size_t limit, At atLimit)
        : bytes_(std::move(bytes)), limit_(limit), atLimit_(atLimit) {}

    std::uint64_t GetSize() override { return bytes_.size(); }

    std::size_t Read(void* buffer, std::size_t size) override {
        if (position_ == limit_ && atLimit_ == At::Throws) {
            throw DeviceError{position_};
        }
        // Never more than three bytes at once, however many are asked for.
        const std::size_t taken = std::min({size, std::size_t{3}, limit_ - position_});
        std::copy_n(bytes_.data() + position_, taken, static_cast<char*>(buffer));
        position_ += taken;
        return taken;
    }

private:
    std::string bytes_;
    std::size_t limit_;
    At atLimit_;
    std::size_t position_ = 0;
};

// Takes `limit` bytes and throws at the next.
class BrokenOutput : public RefCounted<Core::IDataOutput> {
public:
    explicit BrokenOutput(std::size_t limit) : limit_(limit) {}

    void Write(const void* bytes, std::size_t size) override {
        const std::size_t taken = std::min(size, limit_ - bytes_.size());
        bytes_.append(static_cast<const char*>(bytes), taken);
        if (taken < size) {
            throw DeviceError{bytes_.size()};
        }
    }

    const std::string& GetBytes() const { return bytes_; }

private:
    std::size_t limit_;
    std::string bytes_;
};

template <typename Read>
void ExpectThrowsAtEveryByte(const std::string& document, Read read) {
    for (std::size_t limit = 0; limit < document.size(); ++limit) {
        const SP<BrokenInput> input(new BrokenInput(document, limit, At::Throws));
        try {
            read(input);
            ADD_FAILURE() << "nothing was raised at byte " << limit;
        } catch (const DeviceError& error) {
            EXPECT_EQ(error.position, limit);
        }
        EXPECT_EQ(input->GetRefCount(), 1);
    }
}

TEST(StreamFaultTest, Load_LetsAFailureAtAnyByteThrough) {
    for (const char* name : kJobDocuments) {
        const long before = LiveBlocks();
        ExpectThrowsAtEveryByte(JobDocument(name), [](const SP<BrokenInput>& input) {
            const Graph graph = ITranscodingMetaGraph::Create();
            try {
                graph->Load(input);
            } catch (...) {
                EXPECT_EQ(NodesOf(graph), std::vector<Node>());
                EXPECT_EQ(graph->AddNode(Property("after")), 1);
                throw;
            }
        });
        EXPECT_EQ(LiveBlocks(), before);
    }
}

TEST(StreamFaultTest, Load_ThatFailsKeepsWhatTheGraphHadAndStartsTheCountersAnew) {
    const Graph graph = MakeGraph(3, {{1, 2}, {2, 3}});
    const std::vector<Node> nodes = NodesOf(graph);
    const std::vector<Link> links = LinksOf(graph);
    ExpectThrowsAtEveryByte(JobDocument("two-sources.json"),
                            [&graph](const SP<BrokenInput>& input) { graph->Load(input); });
    EXPECT_EQ(NodesOf(graph), nodes);
    EXPECT_EQ(LinksOf(graph), links);
    EXPECT_EQ(graph->GetNodesCount(), 0);
    EXPECT_EQ(graph->AddNode(Property("after")), 1);
    EXPECT_EQ(graph->AddLink(3, 1, Property("after")), 1);
}

TEST(StreamFaultTest, Load_OfAnInputThatEndsEarlyIsNoDocument) {
    for (const char* name : kJobDocuments) {
        const std::string document = JobDocument(name);
        // A document may end with a line's end, which it can do without.
        const std::size_t size = document.find_last_of('}');
        for (std::size_t limit = 0; limit <= size; ++limit) {
            const Graph graph = ITranscodingMetaGraph::Create();
            EXPECT_THROW(graph->Load(SP<BrokenInput>(new BrokenInput(document, limit, At::Ends))), BadJson) << limit;
            EXPECT_EQ(NodesOf(graph), std::vector<Node>());
        }
        const Graph graph = ITranscodingMetaGraph::Create();
        graph->Load(SP<BrokenInput>(new BrokenInput(document, document.size(), At::Ends)));
        EXPECT_EQ(Saved(graph), Saved(Loaded(document)));
    }
}

TEST(StreamFaultTest, Load_OfAnInputThatDoesNotKnowItsSize) {
    class SizelessInput : public BrokenInput {
    public:
        using BrokenInput::BrokenInput;
        std::uint64_t GetSize() override { throw DeviceError{0}; }
    };
    const Graph graph = MakeGraph(1, {});
    EXPECT_THROW(graph->Load(SP<SizelessInput>(new SizelessInput("{}", 0, At::Ends))), DeviceError);
    EXPECT_EQ(NodesOf(graph).size(), 1U);
}

Property MakeTree() { return (*Loaded(JobDocument("every-kind-of-value.json")))[1]; }

TEST(StreamFaultTest, Read_LetsAFailureAtAnyByteThroughAndKeepsTheTree) {
    const auto written = Core::MemoryOutput::Create();
    PropertySerializer::Write(MakeTree(), written);
    const std::string& document = written->GetBytes();
    const Property before("tree", "a text that stays");
    Property tree = before;
    const long blocks = LiveBlocks();
    ExpectThrowsAtEveryByte(document, [&tree](const SP<BrokenInput>& input) { PropertySerializer::Read(tree, input); });
    EXPECT_EQ(tree, before);
    for (std::size_t limit = 0; limit < document.size(); ++limit) {
        const SP<BrokenInput> input(new BrokenInput(document, limit, At::Ends));
        EXPECT_THROW(PropertySerializer::Read(tree, input), PropertyException) << limit;
    }
    EXPECT_EQ(tree, before);
    EXPECT_EQ(LiveBlocks(), blocks);
}

// At every byte of what `write` writes as a whole. Each attempt leaves its first bytes in the output.
template <typename Write>
void ExpectFailsAtEveryByte(const std::string& whole, Write write) {
    ASSERT_FALSE(whole.empty());
    const long before = LiveBlocks();
    for (std::size_t limit = 0; limit < whole.size(); ++limit) {
        const SP<BrokenOutput> output(new BrokenOutput(limit));
        try {
            write(output);
            ADD_FAILURE() << "nothing was raised at byte " << limit;
        } catch (const DeviceError& error) {
            EXPECT_EQ(error.position, limit);
        }
        EXPECT_EQ(output->GetBytes(), whole.substr(0, limit));
        EXPECT_EQ(output->GetRefCount(), 1);
    }
    EXPECT_EQ(LiveBlocks(), before);
    const SP<BrokenOutput> output(new BrokenOutput(whole.size()));
    write(output);
    EXPECT_EQ(output->GetBytes(), whole);
}

TEST(StreamFaultTest, Save_LetsAFailureAtAnyByteThrough) {
    for (const char* name : kJobDocuments) {
        const Graph graph = Loaded(JobDocument(name));
        const std::vector<Node> nodes = NodesOf(graph);
        const std::vector<Link> links = LinksOf(graph);
        ExpectFailsAtEveryByte(Saved(graph), [&graph](const auto& output) { graph->Save(output); });
        EXPECT_EQ(NodesOf(graph), nodes);
        EXPECT_EQ(LinksOf(graph), links);
    }
}

TEST(StreamFaultTest, SaveInToDot_LetsAFailureAtAnyByteThrough) {
    for (const char* name : kJobDocuments) {
        const Graph graph = Loaded(JobDocument(name));
        const std::vector<Node> nodes = NodesOf(graph);
        ExpectFailsAtEveryByte(Drawn(graph), [&graph](const auto& output) { graph->SaveInToDot(output); });
        EXPECT_EQ(NodesOf(graph), nodes);
    }
}

TEST(StreamFaultTest, Write_LetsAFailureAtAnyByteThrough) {
    const Property tree = MakeTree();
    const auto whole = Core::MemoryOutput::Create();
    PropertySerializer::Write(tree, whole);
    ExpectFailsAtEveryByte(whole->GetBytes(), [&tree](const auto& output) { PropertySerializer::Write(tree, output); });
    EXPECT_EQ(tree, MakeTree());
}

// A stream's buffer that hands every character to a broken output.
class BrokenBuffer : public std::streambuf {
public:
    explicit BrokenBuffer(SP<BrokenOutput> output) : output_(std::move(output)) {}

protected:
    int_type overflow(int_type character) override {
        const char byte = traits_type::to_char_type(character);
        output_->Write(&byte, 1);
        return character;
    }

private:
    SP<BrokenOutput> output_;
};

template <typename Print>
void ExpectStreamFailsAtEveryByte(Print print) {
    std::ostringstream whole;
    print(whole);
    ExpectFailsAtEveryByte(whole.str(), [&print](const SP<BrokenOutput>& output) {
        BrokenBuffer buffer(output);
        std::ostream stream(&buffer);
        stream.exceptions(std::ios::badbit);
        print(stream);
    });
    for (std::size_t limit = 0; limit < whole.str().size(); ++limit) {
        const SP<BrokenOutput> output(new BrokenOutput(limit));
        BrokenBuffer buffer(output);
        std::ostream stream(&buffer);
        print(stream);
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(output->GetBytes(), whole.str().substr(0, limit));
    }
}

TEST(StreamFaultTest, Dump_ReportsAFailureAtAnyByteAsTheStreamIsToldTo) {
    const Property tree = MakeTree();
    ExpectStreamFailsAtEveryByte([&tree](std::ostream& os) { PrintCorePropertyValue(tree, 1, os, true, true); });
    const auto video = IFormatCodecVideo::Create();
    ExpectStreamFailsAtEveryByte([&video](std::ostream& os) { video->PrintContent(os); });
    EXPECT_EQ(tree, MakeTree());
}

TEST(StreamFaultTest, Visitor_ThatThrowsEndsTheVisit) {
    const Graph graph = MakeGraph(3, {{1, 2}, {2, 3}});
    int visited = 0;
    const auto stopAtSecond = [&visited](auto&&...) {
        if (++visited == 2) {
            throw DeviceError{2};
        }
    };
    EXPECT_THROW(graph->VisitNodes(stopAtSecond), DeviceError);
    EXPECT_EQ(std::exchange(visited, 0), 2);
    EXPECT_THROW(graph->VisitLinks(stopAtSecond), DeviceError);
    EXPECT_EQ(visited, 2);
    ExpectUsable(graph);
}

std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

TEST(StreamFaultTest, Files_WithoutMemoryForTheirBuffersAreClosed) {
    const std::ptrdiff_t before = OpenDescriptors();
    hasBuffers = false;
    EXPECT_THROW(Core::FileInput::Create(QUENZO_TEST_JOBS "/two-sources.json"), Core::StreamException);
    EXPECT_THROW(Core::FileOutput::Create("/dev/null"), Core::StreamException);
    EXPECT_THROW(Core::FileInput::Create("/nowhere"), Core::StreamException);
    hasBuffers = true;
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_GT(Core::FileInput::Create(QUENZO_TEST_JOBS "/two-sources.json")->GetSize(), 1000U);
}

// A device that is full takes what the buffer holds only when it is written out.
TEST(StreamFaultTest, FileOutput_OnAFullDeviceThrowsAtTheLatestWhenItIsClosed) {
    const Graph graph = Loaded(JobDocument("two-sources.json"));
    const auto output = Core::FileOutput::Create("/dev/full");
    graph->Save(output);
    EXPECT_THROW(output->Close(), Core::StreamException);
    const std::string large(1 << 20, 'x');
    EXPECT_THROW(Core::FileOutput::Create("/dev/full")->Write(large.data(), large.size()), Core::StreamException);
    EXPECT_FALSE(Saved(graph).empty());
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
