// Covers foundation/DataStream.h: the streams in memory and in files, what they refuse, and the failures of devices.

#include <foundation/DataStream.h>
#include <foundation/Exception.h>
#include <tests/foundation/Failures.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace Quenzo::Core {
namespace {

using Testing::Raised;
using Testing::TagOf;

static_assert(std::is_base_of_v<IRefCountable, IDataInput> && std::is_abstract_v<IDataInput>);
static_assert(std::is_base_of_v<IRefCountable, IDataOutput> && std::is_abstract_v<IDataOutput>);

// The call must raise a StreamException with this description and a call stack.
template <typename Call>
void ExpectStreamFailure(Call call, const std::string& description) {
    const auto failure = Raised<StreamException>(call);
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), description);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
}

// The next bytes of an input, by one read.
std::string Read(IDataInput& input, std::size_t size) {
    std::string bytes(size, '?');
    bytes.resize(input.Read(bytes.data(), size));
    return bytes;
}

void Write(IDataOutput& output, const std::string& bytes) { output.Write(bytes.data(), bytes.size()); }

TEST(MemoryInputTest, Read_GivesTheBytesInOrder) {
    const SP<IDataInput> input =
        MemoryInput::Create(std::string("ab\0\xFF"
                                        "cdef",
                                        8));
    EXPECT_EQ(input->GetSize(), 8U);
    EXPECT_EQ(Read(*input, 1), "a");
    EXPECT_EQ(Read(*input, 3), std::string("b\0\xFF", 3));
    EXPECT_EQ(input->GetSize(), 8U);
    EXPECT_EQ(Read(*input, 4), "cdef");
    EXPECT_EQ(Read(*input, 1), "");
}

TEST(MemoryInputTest, Read_BeyondTheEndIsShort) {
    const SP<IDataInput> input = MemoryInput::Create("abc");
    EXPECT_EQ(Read(*input, 100), "abc");
    EXPECT_EQ(Read(*input, 100), "");
}

TEST(MemoryInputTest, Read_OfNothingTakesNothing) {
    const SP<IDataInput> input = MemoryInput::Create("abc");
    EXPECT_EQ(input->Read(nullptr, 0), 0U);
    EXPECT_EQ(Read(*input, 3), "abc");
    EXPECT_EQ(input->Read(nullptr, 0), 0U);
}

TEST(MemoryInputTest, EmptyInput_IsAtItsEnd) {
    const SP<IDataInput> input = MemoryInput::Create("");
    EXPECT_EQ(input->GetSize(), 0U);
    EXPECT_EQ(Read(*input, 1), "");
}

TEST(MemoryOutputTest, Write_Appends) {
    const SP<MemoryOutput> output = MemoryOutput::Create();
    EXPECT_EQ(output->GetBytes(), "");
    Write(*output, "ab");
    Write(*output, "");
    Write(*output, std::string("\0\xFF", 2));
    output->Write(nullptr, 0);
    Write(*output, "c");
    EXPECT_EQ(output->GetBytes(), std::string("ab\0\xFF"
                                              "c",
                                              5));
}

TEST(MemoryStreamsTest, References_AreCounted) {
    const SP<MemoryInput> input = MemoryInput::Create("");
    const SP<IDataInput> other = input;
    EXPECT_EQ(input->GetRefCount(), 2);
    EXPECT_EQ(MemoryOutput::Create()->GetRefCount(), 1);
}

// Gives each test a folder of its own.
class FileStreamTest : public ::testing::Test {
protected:
    FileStreamTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quenzo-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder for temporary files");
        }
        folder_ = pattern;
    }
    ~FileStreamTest() override { std::filesystem::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    std::string Made(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path folder_;
};

std::string AllBytes() {
    std::string bytes;
    for (int i = 0; i < 100000; ++i) {
        bytes.push_back(static_cast<char>(i * 7 + i / 256));
    }
    return bytes;
}

TEST_F(FileStreamTest, Input_GivesTheBytesInOrder) {
    const SP<IDataInput> input = FileInput::Create(Made("file", "abcdef"));
    EXPECT_EQ(input->GetSize(), 6U);
    EXPECT_EQ(Read(*input, 1), "a");
    EXPECT_EQ(Read(*input, 3), "bcd");
    EXPECT_EQ(Read(*input, 100), "ef");
    EXPECT_EQ(Read(*input, 100), "");
    EXPECT_EQ(input->GetSize(), 6U);
}

TEST_F(FileStreamTest, Input_KeepsEveryByte) {
    const std::string bytes = AllBytes();
    const SP<IDataInput> input = FileInput::Create(Made("file", bytes));
    EXPECT_EQ(input->GetSize(), 100000U);
    EXPECT_EQ(Read(*input, 200000), bytes);
}

TEST_F(FileStreamTest, Input_OfAnEmptyFileIsAtItsEnd) {
    const SP<IDataInput> input = FileInput::Create(Made("file", ""));
    EXPECT_EQ(input->GetSize(), 0U);
    EXPECT_EQ(Read(*input, 1), "");
    EXPECT_EQ(input->Read(nullptr, 0), 0U);
}

TEST_F(FileStreamTest, Input_OfAFileThatWasCutOffIsShort) {
    const std::string path = Made("file", "abcdef");
    const SP<IDataInput> input = FileInput::Create(path);
    std::filesystem::resize_file(path, 2);
    EXPECT_EQ(input->GetSize(), 6U);
    EXPECT_EQ(Read(*input, 6), "ab");
}

TEST_F(FileStreamTest, Input_StaysOpenWhenTheFileIsDeleted) {
    const std::string path = Made("file", "abc");
    const SP<IDataInput> input = FileInput::Create(path);
    std::filesystem::remove(path);
    EXPECT_EQ(Read(*input, 3), "abc");
}

TEST_F(FileStreamTest, Input_FollowsASymbolicLink) {
    Made("file", "abc");
    std::filesystem::create_symlink("file", Path("link"));
    EXPECT_EQ(Read(*FileInput::Create(Path("link")), 3), "abc");
}

TEST_F(FileStreamTest, Names_MayBeAnyBytes) {
    for (const std::string name : {"\xD1\x84 \xF0\x9F\x8E\xAC", "\xFF\xFE", "a\nb\"", "%s"}) {
        Write(*FileOutput::Create(Path(name)), "abc");
        EXPECT_EQ(Content(Path(name)), "abc");
        EXPECT_EQ(Read(*FileInput::Create(Path(name)), 3), "abc");
    }
}

TEST_F(FileStreamTest, Input_OfAMissingFileThrows) {
    ExpectStreamFailure([&] { FileInput::Create(Path("missing")); },
                        "cannot read \"" + Path("missing") + "\": No such file or directory");
    ExpectStreamFailure([] { FileInput::Create(""); }, "cannot read \"\": No such file or directory");
    ExpectStreamFailure([&] { FileInput::Create(Made("file", "") + "/below"); },
                        "cannot read \"" + Path("file/below") + "\": Not a directory");
}

TEST_F(FileStreamTest, Input_OfADirectoryThrows) {
    ExpectStreamFailure([&] { FileInput::Create(Path("")); }, "cannot read \"" + Path("") + "\": it is a directory");
}

TEST_F(FileStreamTest, Input_OfADeviceThrows) {
    ExpectStreamFailure([] { FileInput::Create("/dev/null"); }, "cannot read \"/dev/null\": it is no regular file");
    ExpectStreamFailure([] { FileInput::Create("/dev/zero"); }, "cannot read \"/dev/zero\": it is no regular file");
}

TEST_F(FileStreamTest, Input_OfAPipeWithAWriterThrows) {
    const std::string path = Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int bothEnds = open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(bothEnds, 0);
    ExpectStreamFailure([&] { FileInput::Create(path); }, "cannot read \"" + path + "\": it is no regular file");
    close(bothEnds);
}

TEST_F(FileStreamTest, Input_OfAPipeWithoutAWriterThrowsAndDoesNotWait) {
    using namespace std::chrono_literals;
    const std::string path = Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::future<void> creation = std::async(std::launch::async, [&] {
        ExpectStreamFailure([&] { FileInput::Create(path); }, "cannot read \"" + path + "\": it is no regular file");
    });
    const bool isDone = creation.wait_for(5s) == std::future_status::ready;
    EXPECT_TRUE(isDone) << "waits for somebody to write into the pipe";
    if (!isDone) {
        // Lets the waiting thread go on.
        close(open(path.c_str(), O_RDWR | O_CLOEXEC));
    }
    creation.get();
}

TEST_F(FileStreamTest, Input_OfAPathWithAZeroByteThrows) {
    const std::string path = Made("file", "abc") + std::string("\0.txt", 5);
    ExpectStreamFailure([&] { FileInput::Create(path); }, "cannot read \"" + path + "\": its name holds a zero byte");
}

TEST_F(FileStreamTest, Input_OfADeviceThatFailsThrowsOnReading) {
    // The first page of the memory of a process is never there.
    const SP<IDataInput> input = FileInput::Create("/proc/self/mem");
    ExpectStreamFailure([&] { Read(*input, 1); }, "cannot read \"/proc/self/mem\": Input/output error");
}

TEST_F(FileStreamTest, Output_HoldsTheBytesAfterClosing) {
    const std::string bytes = AllBytes();
    const SP<FileOutput> output = FileOutput::Create(Path("file"));
    Write(*output, bytes);
    Write(*output, "");
    output->Write(nullptr, 0);
    Write(*output, "end");
    output->Close();
    EXPECT_EQ(Content(Path("file")), bytes + "end");
}

TEST_F(FileStreamTest, Output_HoldsTheBytesAfterTheLastReference) {
    SP<IDataOutput> output = FileOutput::Create(Path("file"));
    Write(*output, "abc");
    output.reset();
    EXPECT_EQ(Content(Path("file")), "abc");
}

TEST_F(FileStreamTest, Output_ReplacesWhatTheFileHeld) {
    FileOutput::Create(Made("file", "a longer text"))->Close();
    EXPECT_EQ(Content(Path("file")), "");
    Write(*FileOutput::Create(Path("file")), "short");
    EXPECT_EQ(Content(Path("file")), "short");
}

TEST_F(FileStreamTest, Output_ThatIsClosedThrowsAndKeepsTheFile) {
    const SP<FileOutput> output = FileOutput::Create(Path("file"));
    Write(*output, "abc");
    output->Close();
    ExpectStreamFailure([&] { Write(*output, "d"); }, "cannot write \"" + Path("file") + "\": it is closed already");
    EXPECT_NO_THROW(output->Close());
    EXPECT_EQ(Content(Path("file")), "abc");
}

TEST_F(FileStreamTest, Output_ThatCannotBeOpenedThrows) {
    ExpectStreamFailure([&] { FileOutput::Create(Path("")); }, "cannot write \"" + Path("") + "\": Is a directory");
    ExpectStreamFailure([&] { FileOutput::Create(Path("missing/file")); },
                        "cannot write \"" + Path("missing/file") + "\": No such file or directory");
    ExpectStreamFailure([] { FileOutput::Create(""); }, "cannot write \"\": No such file or directory");
}

TEST_F(FileStreamTest, Output_ToAPathWithAZeroByteThrowsAndWritesNoFile) {
    const std::string path = Path("file") + std::string("\0.txt", 5);
    ExpectStreamFailure([&] { FileOutput::Create(path); }, "cannot write \"" + path + "\": its name holds a zero byte");
    EXPECT_FALSE(std::filesystem::exists(Path("file")));
}

TEST_F(FileStreamTest, Output_ToAFullDiskThrowsWhenTheBytesGoOut) {
    const std::string reason = "cannot write \"/dev/full\": No space left on device";
    const SP<FileOutput> large = FileOutput::Create("/dev/full");
    ExpectStreamFailure([&] { Write(*large, AllBytes()); }, reason);
    const SP<FileOutput> small = FileOutput::Create("/dev/full");
    Write(*small, "buffered");
    ExpectStreamFailure([&] { small->Close(); }, reason);
    EXPECT_NO_THROW(small->Close());
}

TEST_F(FileStreamTest, Output_ToAFullDiskIsDroppedInSilenceWithoutClosing) {
    SP<FileOutput> output = FileOutput::Create("/dev/full");
    Write(*output, "buffered");
    EXPECT_NO_THROW(output.reset());
}

}  // namespace
}  // namespace Quenzo::Core
