// Covers foundation/JsonStream.h: the adapters between JSON readers and writers and byte streams, call by call.

#include <foundation/JsonStream.h>
#include <tests/foundation/Failures.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Quenzo::Core {
namespace {

static_assert(std::is_same_v<JsonQuenzoStreamIn::Ch, char> && std::is_same_v<JsonQuenzoStreamOut::Ch, char>);

// States a size of its own, whatever bytes it has, and notes how many bytes each read asked for.
class NotingInput : public RefCounted<IDataInput> {
public:
    NotingInput(std::string bytes, std::uint64_t statedSize) : bytes_(std::move(bytes)), statedSize_(statedSize) {}

    std::uint64_t GetSize() override { return statedSize_; }

    std::size_t Read(void* buffer, std::size_t size) override {
        reads.push_back(size);
        const std::size_t taken = std::min(size, bytes_.size() - position_);
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(position_), taken, static_cast<char*>(buffer));
        position_ += taken;
        return taken;
    }

    std::vector<std::size_t> reads;

private:
    std::string bytes_;
    std::uint64_t statedSize_;
    std::size_t position_ = 0;
};

class NotingOutput : public RefCounted<IDataOutput> {
public:
    void Write(const void* bytes, std::size_t size) override {
        writes.emplace_back(static_cast<const char*>(bytes), size);
    }

    std::vector<std::string> writes;
};

SP<NotingInput> Input(const std::string& bytes) { return SP<NotingInput>(new NotingInput(bytes, bytes.size())); }

using Sizes = std::vector<std::size_t>;

TEST(JsonStreamInTest, Construction_TakesTheFirstByte) {
    const SP<NotingInput> input = Input("ab");
    const JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(input->reads, Sizes{1});
    EXPECT_EQ(stream.Peek(), 'a');
    EXPECT_EQ(stream.Tell(), 1U);
}

TEST(JsonStreamInTest, Construction_OnAnEmptyInputReadsNothing) {
    const SP<NotingInput> input = Input("");
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Peek(), '\0');
    EXPECT_EQ(stream.Tell(), 0U);
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(stream.Tell(), 0U);
    EXPECT_EQ(input->reads, Sizes());
}

TEST(JsonStreamInTest, Peek_DoesNotAdvance) {
    const SP<NotingInput> input = Input("ab");
    const JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Peek(), 'a');
    EXPECT_EQ(stream.Peek(), 'a');
    EXPECT_EQ(stream.Tell(), 1U);
    EXPECT_EQ(input->reads, Sizes{1});
}

TEST(JsonStreamInTest, Take_GivesTheByteAtHandAndReadsTheNext) {
    const SP<NotingInput> input = Input("abc");
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_EQ(stream.Peek(), 'b');
    EXPECT_EQ(stream.Tell(), 2U);
    EXPECT_EQ(stream.Take(), 'b');
    EXPECT_EQ(stream.Tell(), 3U);
    EXPECT_EQ(input->reads, (Sizes{1, 1, 1}));
}

TEST(JsonStreamInTest, End_ShowsAsZeroForEverAndIsNotReadAgain) {
    const SP<NotingInput> input = Input("ab");
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_EQ(stream.Take(), 'b');
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stream.Peek(), '\0');
        EXPECT_EQ(stream.Take(), '\0');
        EXPECT_EQ(stream.Tell(), 2U);
    }
    EXPECT_EQ(input->reads, (Sizes{1, 1}));
}

TEST(JsonStreamInTest, Bytes_AreKeptAsTheyAre) {
    JsonQuenzoStreamIn stream(Input(std::string("\xFF\0\x80", 3)));
    EXPECT_EQ(stream.Take(), '\xFF');
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(stream.Tell(), 3U);
    EXPECT_EQ(stream.Take(), '\x80');
    EXPECT_EQ(stream.Take(), '\0');
}

TEST(JsonStreamInTest, MoreBytesThanStated_AreNotRead) {
    const SP<NotingInput> input(new NotingInput("abcdef", 2));
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_EQ(stream.Take(), 'b');
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(input->reads, (Sizes{1, 1}));
}

TEST(JsonStreamInTest, FewerBytesThanStated_ShowAsTheEnd) {
    const SP<NotingInput> input(new NotingInput("ab", 1000));
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_EQ(stream.Take(), 'b');
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stream.Take(), '\0');
        EXPECT_EQ(stream.Tell(), 2U);
    }
}

TEST(JsonStreamInTest, NoBytesAtAllBehindAStatedSize_ShowAsTheEnd) {
    const SP<NotingInput> input(new NotingInput("", UINT64_MAX));
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Peek(), '\0');
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(stream.Tell(), 0U);
}

TEST(JsonStreamInTest, Reference_IsHeldForTheLifeOfTheStream) {
    const SP<NotingInput> input = Input("ab");
    {
        const JsonQuenzoStreamIn stream(input);
        EXPECT_EQ(input->GetRefCount(), 2);
    }
    EXPECT_EQ(input->GetRefCount(), 1);
}

class FailingInput : public RefCounted<IDataInput> {
public:
    std::uint64_t GetSize() override { return 10; }
    std::size_t Read(void* buffer, std::size_t /*unused*/) override {
        if (++count_ == 3) {
            throw std::runtime_error("the device failed");
        }
        std::memset(buffer, 'x', 1);
        return 1;
    }

private:
    int count_ = 0;
};

TEST(JsonStreamInTest, FailureOfTheDevice_ComesThrough) {
    const SP<FailingInput> input(new FailingInput());
    JsonQuenzoStreamIn stream(input);
    EXPECT_EQ(stream.Take(), 'x');
    EXPECT_THROW(stream.Take(), std::runtime_error);
}

TEST(JsonStreamOutTest, Put_WritesOneByteEach) {
    const SP<NotingOutput> output(new NotingOutput());
    JsonQuenzoStreamOut stream(output);
    stream.Put('a');
    EXPECT_EQ(output->writes, (std::vector<std::string>{"a"}));
    stream.Put('\0');
    stream.Put('\xFF');
    EXPECT_EQ(output->writes, (std::vector<std::string>{"a", std::string(1, '\0'), "\xFF"}));
}

TEST(JsonStreamOutTest, Flush_WritesNothing) {
    const SP<NotingOutput> output(new NotingOutput());
    JsonQuenzoStreamOut stream(output);
    stream.Flush();
    stream.Put('a');
    stream.Flush();
    EXPECT_EQ(output->writes, (std::vector<std::string>{"a"}));
}

TEST(JsonStreamOutTest, Reference_IsHeldForTheLifeOfTheStream) {
    const SP<NotingOutput> output(new NotingOutput());
    {
        const JsonQuenzoStreamOut stream(output);
        EXPECT_EQ(output->GetRefCount(), 2);
    }
    EXPECT_EQ(output->GetRefCount(), 1);
}

}  // namespace
}  // namespace Quenzo::Core
