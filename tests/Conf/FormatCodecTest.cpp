// Covers the base of the stream descriptions: the tree it starts with, its accessors and attachments, cloning, and the
// slots of its virtual functions.

#include <Conf/Interfaces/IFormatCodec.h>
#include <foundation/Blob.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace Quenzo::Proc {

// Stands in for the platform's handle.
class AVAssetTrackWrapper {
public:
    explicit AVAssetTrackWrapper(int number) : number_(number) {}
    int Number() const { return number_; }

private:
    int number_;
};

}  // namespace Quenzo::Proc

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Quenzo::Testing::ExpectPropertyFailure;
using Quenzo::Testing::VirtualSlot;

static_assert(std::is_base_of_v<IFormat, IFormatCodec>);
static_assert(std::is_same_v<std::underlying_type_t<MediaType>, std::int32_t>);
static_assert(static_cast<int>(MediaType::None) == 0 && static_cast<int>(MediaType::Video) == 1 &&
              static_cast<int>(MediaType::Audio) == 2 && static_cast<int>(MediaType::SubtitlesText) == 4);

// clang warns of a dereferenced pointer in typeid.
const std::type_info& ClassOf(const IFormatCodec& codec) { return typeid(codec); }

// A stream class of its own kind, which clones as the library's stream classes do.
class KindOfCodec : public IFormatCodec {
public:
    static SP<KindOfCodec> Create() { return SP<KindOfCodec>(new KindOfCodec()); }

    MediaType GetCodecType() const override { return MediaType::Video; }
    SP<KindOfCodec> Clone() const { return SP<KindOfCodec>(new KindOfCodec(*this)); }
    SP<IFormatCodec> CloneBase() const override { return Clone(); }

    using IFormatCodec::Tree;

protected:
    KindOfCodec() : IFormatCodec("kind_of_codec") {}
    KindOfCodec(const KindOfCodec&) = default;
};

SP<const IBlob> MakeBlob() { return Blob::Create(std::vector<std::uint8_t>{1, 2, 3}); }

std::shared_ptr<Proc::AVAssetTrackWrapper> MakeTrack() { return std::make_shared<Proc::AVAssetTrackWrapper>(7); }

TEST(FormatCodecTest, Constructor_MakesTheTreeInOrder) {
    EXPECT_EQ(KindOfCodec::Create()->GetProperty(), StreamTree("kind_of_codec"));
}

TEST(FormatCodecTest, CreateUndefined_MakesANamelessDescription) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    EXPECT_EQ(codec->GetProperty(), StreamTree(""));
    EXPECT_TRUE(codec->IsUndefined());
    EXPECT_EQ(codec->GetCodecType(), MediaType::None);
    EXPECT_EQ(codec->GetRefCount(), 1);
    EXPECT_EQ(codec->GetPrivateData(), nullptr);
    EXPECT_EQ(codec->GetAssetTrack(), nullptr);
    EXPECT_EQ(ClassOf(*codec), typeid(IFormatCodec));
}

TEST(FormatCodecTest, IsUndefined_LooksAtTheNameOnly) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    codec->SetProperty(Property("x"));
    EXPECT_FALSE(codec->IsUndefined());
    codec->SetProperty(Tree("", {Property("codec_id", "CODEC_ID_H264")}));
    EXPECT_TRUE(codec->IsUndefined());
    EXPECT_FALSE(KindOfCodec::Create()->IsUndefined());
}

TEST(FormatCodecTest, SetProperty_WithoutANameLeavesTheKind) {
    const SP<KindOfCodec> codec = KindOfCodec::Create();
    codec->SetProperty(Property(""));
    EXPECT_TRUE(codec->IsUndefined());
    EXPECT_EQ(codec->GetCodecType(), MediaType::Video);
    codec->SetProperty(Property("x"));
    EXPECT_FALSE(codec->IsUndefined());
}

TEST(FormatCodecTest, SetProperty_AddsOnlyTheTwoMetadataNodes) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    codec->SetProperty(Tree("x", {Property("bitrate", 5)}));
    EXPECT_EQ(codec->GetProperty(),
              Tree("x", {Property("bitrate", 5), Property("metadata"), Property("stream_metadata")}));
    ExpectMissing([&] { codec->GetOptionsEncode(); }, "x", "codec.options.encode");
    ExpectMissing([&] { codec->SetOptionsEncode(Property("codec.options.encode")); }, "x", "codec.options.encode");
    EXPECT_FALSE(codec->GetProperty().ChildExists("stream_id"));
}

TEST(FormatCodecTest, SetProperty_KeepsWhatIsThere) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    const Property tree = Tree("x", {Tree("stream_metadata", {Property("a", 1)}), Property("metadata", "text")});
    codec->SetProperty(tree);
    EXPECT_EQ(codec->GetProperty(), tree);
}

TEST(FormatCodecTest, SetProperty_OfALeafThrowsAndChangesNothing) {
    const SP<KindOfCodec> codec = KindOfCodec::Create();
    ExpectPropertyFailure<Core::MethodIsNotApplicable>([&] { codec->SetProperty(Property("leaf", 1)); },
                                                       {"leaf", PropertyTypes::Int64, "SetChild"});
    EXPECT_EQ(codec->GetProperty(), StreamTree("kind_of_codec"));
}

TEST(FormatCodecTest, SetProperty_LeavesTheAttachments) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    const SP<const IBlob> blob = MakeBlob();
    const auto track = MakeTrack();
    codec->SetPrivateData(blob);
    codec->SetAssetTrack(track);
    codec->SetProperty(Property("x"));
    EXPECT_EQ(codec->GetPrivateData(), blob);
    EXPECT_EQ(codec->GetAssetTrack(), track);
}

TEST(FormatCodecTest, SetOptionsEncode_ReplacesTheOptions) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    EXPECT_EQ(codec->GetOptionsEncode(), Property("codec.options.encode"));
    Property options = codec->GetOptionsEncode();
    options.SetChildT<bool>("use_hardware_context", true);
    codec->SetOptionsEncode(options);
    EXPECT_EQ(codec->GetOptionsEncode(), Tree("codec.options.encode", {Property("use_hardware_context", true)}));
    EXPECT_EQ(codec->GetProperty(),
              Tree("", {Property("metadata"), options, Property("stream_id", -1), Property("stream_metadata")}));
}

TEST(FormatCodecTest, SetOptionsEncode_OfATreeOfAnotherNameRenamesTheChild) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    codec->SetOptionsEncode(Property("other", 5));
    EXPECT_EQ(codec->GetProperty(), Tree("", {Property("metadata"), Property("other", 5), Property("stream_id", -1),
                                              Property("stream_metadata")}));
    ExpectMissing([&] { codec->GetOptionsEncode(); }, "", "codec.options.encode");
}

TEST(FormatCodecTest, SetStreamMetadata_ReplacesTheStreamMetadata) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    EXPECT_EQ(codec->GetStreamMetadata(), Property("stream_metadata"));
    const Property metadata = Tree("stream_metadata", {Property("title", "x")});
    codec->SetStreamMetadata(metadata);
    EXPECT_EQ(codec->GetStreamMetadata(), metadata);
    EXPECT_EQ(codec->GetMetadata(), Property("metadata"));
    codec->SetStreamMetadata(Property("other"));
    EXPECT_EQ(codec->GetProperty(), Tree("", {Property("metadata"), Property("codec.options.encode"),
                                              Property("stream_id", -1), Property("other")}));
    ExpectMissing([&] { codec->GetStreamMetadata(); }, "", "stream_metadata");
    ExpectMissing([&] { codec->SetStreamMetadata(metadata); }, "", "stream_metadata");
}

TEST(FormatCodecTest, SetPrivateData_SharesTheBlob) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    const SP<const IBlob> first = MakeBlob();
    const SP<const IBlob> second = MakeBlob();
    codec->SetPrivateData(first);
    EXPECT_EQ(codec->GetPrivateData(), first);
    EXPECT_EQ(first->GetRefCount(), 2);
    codec->SetPrivateData(second);
    EXPECT_EQ(first->GetRefCount(), 1);
    EXPECT_EQ(second->GetRefCount(), 2);
    codec->SetPrivateData(codec->GetPrivateData());
    EXPECT_EQ(second->GetRefCount(), 2);
    codec->SetPrivateData(nullptr);
    EXPECT_EQ(second->GetRefCount(), 1);
    EXPECT_EQ(codec->GetPrivateData(), nullptr);
}

TEST(FormatCodecTest, SetAssetTrack_SharesTheHandle) {
    const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    const auto track = MakeTrack();
    codec->SetAssetTrack(track);
    EXPECT_EQ(codec->GetAssetTrack(), track);
    EXPECT_EQ(codec->GetAssetTrack()->Number(), 7);
    EXPECT_EQ(track.use_count(), 2);
    codec->SetAssetTrack(nullptr);
    EXPECT_EQ(track.use_count(), 1);
}

TEST(FormatCodecTest, Compare_TakesNoNoticeOfTheAttachments) {
    const SP<IFormatCodec> one = IFormatCodec::CreateUndefined();
    const SP<IFormatCodec> two = IFormatCodec::CreateUndefined();
    one->SetPrivateData(MakeBlob());
    one->SetAssetTrack(MakeTrack());
    EXPECT_TRUE(one->Compare(two));
    EXPECT_TRUE(two->Compare(one));
}

TEST(FormatCodecTest, Compare_TakesNoNoticeOfTheClass) {
    const SP<IFormatCodec> plain = IFormatCodec::CreateUndefined();
    plain->SetProperty(StreamTree("kind_of_codec"));
    EXPECT_TRUE(plain->Compare(KindOfCodec::Create()));
    plain->SetProperty(StreamTree("x"));
    EXPECT_FALSE(plain->Compare(KindOfCodec::Create()));
}

TEST(FormatCodecTest, CloneBase_CopiesTheTreeAndSharesTheAttachments) {
    const SP<IFormatCodec> source = IFormatCodec::CreateUndefined();
    const SP<const IBlob> blob = MakeBlob();
    const auto track = MakeTrack();
    source->SetPrivateData(blob);
    source->SetAssetTrack(track);
    source->SetProperty(Tree("x", {Property("bitrate", 5)}));
    const SP<IFormatCodec> clone = source->CloneBase();
    EXPECT_NE(clone, source);
    EXPECT_EQ(clone->GetProperty(), source->GetProperty());
    EXPECT_TRUE(clone->Compare(source));
    EXPECT_EQ(clone->GetPrivateData(), blob);
    EXPECT_EQ(blob->GetRefCount(), 3);
    EXPECT_EQ(clone->GetAssetTrack(), track);
    EXPECT_EQ(track.use_count(), 3);
}

TEST(FormatCodecTest, CloneBase_GivesAnIndependentTree) {
    const SP<IFormatCodec> source = IFormatCodec::CreateUndefined();
    const SP<IFormatCodec> clone = source->CloneBase();
    clone->SetMetadata(Property("metadata", "clone"));
    EXPECT_EQ(source->GetProperty(), StreamTree(""));
    source->SetStreamMetadata(Property("stream_metadata", "source"));
    EXPECT_EQ(clone->GetStreamMetadata(), Property("stream_metadata"));
    clone->SetPrivateData(MakeBlob());
    EXPECT_EQ(source->GetPrivateData(), nullptr);
}

TEST(FormatCodecTest, CloneBase_CountsReferencesAnew) {
    const SP<IFormatCodec> source = IFormatCodec::CreateUndefined();
    const std::vector<SP<IFormatCodec>> references(4, source);
    EXPECT_EQ(source->GetRefCount(), 5);
    EXPECT_EQ(source->CloneBase()->GetRefCount(), 1);
    EXPECT_EQ(source->GetRefCount(), 5);
}

TEST(FormatCodecTest, CloneBase_KeepsTheClass) {
    const SP<IFormatCodec> plain = IFormatCodec::CreateUndefined()->CloneBase();
    EXPECT_EQ(ClassOf(*plain), typeid(IFormatCodec));
    EXPECT_EQ(plain->GetCodecType(), MediaType::None);
    const SP<const IFormatCodec> source = KindOfCodec::Create();
    const SP<IFormatCodec> clone = source->CloneBase();
    EXPECT_EQ(ClassOf(*clone), typeid(KindOfCodec));
    EXPECT_EQ(clone->GetCodecType(), MediaType::Video);
    EXPECT_EQ(clone->GetRefCount(), 1);
}

TEST(FormatCodecTest, Release_OfTheLastReferenceLetsGoOfTheAttachments) {
    const SP<const IBlob> blob = MakeBlob();
    const auto track = MakeTrack();
    SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
    codec->SetPrivateData(blob);
    codec->SetAssetTrack(track);
    SP<const IFormatCodec> clone = codec->CloneBase();
    codec->AddRef();
    EXPECT_EQ(codec->Release(), 1);
    codec.reset();
    EXPECT_EQ(blob->GetRefCount(), 2);
    EXPECT_EQ(track.use_count(), 2);
    clone.reset();
    EXPECT_EQ(blob->GetRefCount(), 1);
    EXPECT_EQ(track.use_count(), 1);
}

// The track goes first, then the private data: the track's end sees the blob still held.
TEST(FormatCodecTest, Release_LetsGoOfTheTrackBeforeThePrivateData) {
    const SP<const IBlob> blob = MakeBlob();
    long countAtEnd = 0;
    {
        const SP<IFormatCodec> codec = IFormatCodec::CreateUndefined();
        codec->SetPrivateData(blob);
        codec->SetAssetTrack(std::shared_ptr<Proc::AVAssetTrackWrapper>(new Proc::AVAssetTrackWrapper(1),
                                                                        [&](Proc::AVAssetTrackWrapper* track) {
                                                                            countAtEnd = blob->GetRefCount();
                                                                            delete track;
                                                                        }));
    }
    EXPECT_EQ(countAtEnd, 2);
    EXPECT_EQ(blob->GetRefCount(), 1);
}

// The destructor takes the slots 0 and 1.
TEST(FormatCodecTest, VirtualFunctions_StandInTheirSlots) {
    EXPECT_EQ(VirtualSlot(&IFormatCodec::AddRef), 2U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetRefCount), 3U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::Release), 4U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetProperty), 5U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::SetProperty), 6U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetCodecType), 7U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::SetOptionsEncode), 8U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetOptionsEncode), 9U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetStreamMetadata), 10U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::SetStreamMetadata), 11U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::SetPrivateData), 12U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetPrivateData), 13U);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::CloneBase), 14U);
}

TEST(FormatCodecTest, OtherFunctions_AreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&IFormatCodec::SetAssetTrack), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::GetAssetTrack), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatCodec::IsUndefined), std::nullopt);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
