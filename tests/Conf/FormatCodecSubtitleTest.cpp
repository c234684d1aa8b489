// Covers the header of a subtitle description: the bytes of its private data as a text.

#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <foundation/Blob.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Bytes = std::vector<std::uint8_t>;

SP<IFormatCodecSubtitle> SubtitleWith(const SP<const IBlob>& blob) {
    const SP<IFormatCodecSubtitle> subtitle = IFormatCodecSubtitle::Create();
    subtitle->SetPrivateData(blob);
    return subtitle;
}

std::string HeaderOf(const Bytes& bytes) { return SubtitleWith(Blob::Create(bytes))->GetSubtitleHeader(); }

// Bytes that somebody else owns.
class Window : public RefCounted<IBlob> {
public:
    Window(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    const std::uint8_t* GetData() const override { return data_; }
    std::size_t GetSize() const override { return size_; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_WithoutPrivateDataIsEmpty) {
    EXPECT_EQ(IFormatCodecSubtitle::Create()->GetSubtitleHeader(), "");
    const SP<IFormatCodecSubtitle> subtitle = SubtitleWith(Blob::Create({'a'}));
    subtitle->SetPrivateData(nullptr);
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "");
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_OfAnEmptyBlobIsEmpty) {
    EXPECT_EQ(HeaderOf({}), "");
    EXPECT_EQ(SubtitleWith(SP<IBlob>(new Window(nullptr, 0)))->GetSubtitleHeader(), "");
    const std::uint8_t byte = 'x';
    EXPECT_EQ(SubtitleWith(SP<IBlob>(new Window(&byte, 0)))->GetSubtitleHeader(), "");
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_HasExactlyTheBytes) {
    using namespace std::string_literals;
    EXPECT_EQ(HeaderOf({'[', 'S', 't', 'y', 'l', 'e', ']', '\n'}), "[Style]\n");
    EXPECT_EQ(HeaderOf({0}), "\0"s);
    EXPECT_EQ(HeaderOf({0, 0, 0}), "\0\0\0"s);
    EXPECT_EQ(HeaderOf({'a', 0, 'b', 0}), "a\0b\0"s);
    EXPECT_EQ(HeaderOf({0xFF, 0x80, 0xC3}), "\xFF\x80\xC3"s);
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_NeedsNoTerminator) {
    const Bytes bytes = {'a', 'b', 'c', 'd', 'e'};
    EXPECT_EQ(SubtitleWith(SP<IBlob>(new Window(bytes.data() + 1, 3)))->GetSubtitleHeader(), "bcd");
    EXPECT_EQ(SubtitleWith(SP<IBlob>(new Window(bytes.data() + 3, 2)))->GetSubtitleHeader(), "de");
}

RC_GTEST_PROP(FormatCodecSubtitleTest, GetSubtitleHeader_OfAnyBytesHasThem, (const Bytes& bytes)) {
    const std::string header = HeaderOf(bytes);
    RC_ASSERT(header.size() == bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        RC_ASSERT(static_cast<std::uint8_t>(header[i]) == bytes[i]);
    }
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_KeepsNoReference) {
    const SP<const IBlob> blob = Blob::Create({'a', 'b'});
    const SP<IFormatCodecSubtitle> subtitle = SubtitleWith(blob);
    EXPECT_EQ(blob->GetRefCount(), 2);
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "ab");
    EXPECT_EQ(blob->GetRefCount(), 2);
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_ReadsThroughTheVirtualFunction) {
    class Disguised : public IFormatCodecSubtitle {
    public:
        SP<const IBlob> GetPrivateData() const override { return Blob::Create({'o', 't', 'h', 'e', 'r'}); }
    };
    const SP<IFormatCodecSubtitle> subtitle(new Disguised());
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "other");
    subtitle->SetPrivateData(Blob::Create({'a'}));
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "other");
}

TEST(FormatCodecSubtitleTest, GetSubtitleHeader_IsNoPartOfTheTree) {
    const SP<IFormatCodecSubtitle> subtitle = SubtitleWith(Blob::Create({'a', 'b'}));
    EXPECT_EQ(subtitle->GetProperty(), StreamTree("format_codec_subtitle"));
    subtitle->SetProperty(Property("format_codec_subtitle"));
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "ab");
}

TEST(FormatCodecSubtitleTest, Clone_HasTheSameHeader) {
    const SP<IFormatCodecSubtitle> subtitle = SubtitleWith(Blob::Create({'a', 0, 'b'}));
    const SP<IFormatCodecSubtitle> clone = subtitle->Clone();
    const auto baseClone = boost::dynamic_pointer_cast<IFormatCodecSubtitle>(subtitle->CloneBase());
    subtitle->SetPrivateData(nullptr);
    EXPECT_EQ(clone->GetSubtitleHeader(), std::string("a\0b", 3));
    ASSERT_NE(baseClone, nullptr);
    EXPECT_EQ(baseClone->GetSubtitleHeader(), std::string("a\0b", 3));
    EXPECT_EQ(subtitle->GetSubtitleHeader(), "");
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
