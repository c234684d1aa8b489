// Covers what the classes of video, audio and subtitle streams have in common: the tree each starts with, its kind,
// cloning, counting, replacing the tree, the slots of their virtual functions, and the room they take.

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <foundation/Blob.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/foundation/TreeGenerator.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Quenzo::Testing::VirtualSlot;

using Video = IFormatCodecVideo;
using Audio = IFormatCodecAudio;
using Subtitle = IFormatCodecSubtitle;

static_assert(sizeof(Video) == sizeof(IFormatCodec));
static_assert(sizeof(Audio) == sizeof(IFormatCodec));
static_assert(sizeof(Subtitle) == sizeof(IFormatCodec));

// Which class declares the functions that set the tree.
static_assert(std::is_same_v<decltype(&Video::SetProperty), void (IFormatCodec::*)(const Property&)>);
static_assert(std::is_same_v<decltype(&Audio::SetProperty), void (IFormatCodec::*)(const Property&)>);
static_assert(std::is_same_v<decltype(&Subtitle::SetProperty), void (IFormatCodec::*)(const Property&)>);

template <typename Stream>
struct Facts;

template <>
struct Facts<Video> {
    static constexpr MediaType kKind = MediaType::Video;
    static constexpr int kCode = 1;
    static constexpr const char* kName = "format_codec_video";
    static Property NewTree() { return StreamTree(kName, {Property("cover_flag", false)}); }
};

template <>
struct Facts<Audio> {
    static constexpr MediaType kKind = MediaType::Audio;
    static constexpr int kCode = 2;
    static constexpr const char* kName = "format_codec_audio";
    static Property NewTree() { return StreamTree(kName); }
};

template <>
struct Facts<Subtitle> {
    static constexpr MediaType kKind = MediaType::SubtitlesText;
    static constexpr int kCode = 4;
    static constexpr const char* kName = "format_codec_subtitle";
    static Property NewTree() { return StreamTree(kName); }
};

SP<const IBlob> MakeBlob() { return Blob::Create(std::vector<std::uint8_t>{1, 2, 3}); }

// A handle that nobody looks into: the address of something else.
std::shared_ptr<Proc::AVAssetTrackWrapper> MakeTrack() {
    const auto owner = std::make_shared<int>(7);
    void* const address = owner.get();
    return {owner, static_cast<Proc::AVAssetTrackWrapper*>(address)};
}

template <typename Stream>
class Watched : public Stream {
public:
    explicit Watched(int& destroyed) : destroyed_(destroyed) {}
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

protected:
    ~Watched() override { ++destroyed_; }

private:
    int& destroyed_;
};

template <typename Stream>
class FormatCodecClassesTest : public testing::Test {
public:
    using Self = Facts<Stream>;

    void ExpectClassOf(const IFormatCodec& clone) {
        EXPECT_EQ(typeid(clone), typeid(Stream));
        EXPECT_EQ(clone.GetCodecType(), Self::kKind);
    }

    const SP<Stream> stream_ = Stream::Create();
};

using StreamClasses = testing::Types<Video, Audio, Subtitle>;
TYPED_TEST_SUITE(FormatCodecClassesTest, StreamClasses, );

TYPED_TEST(FormatCodecClassesTest, Class_IsMadeByItsFactoriesOnly) {
    static_assert(std::is_base_of_v<IFormatCodec, TypeParam> && std::has_virtual_destructor_v<TypeParam>);
    static_assert(!std::is_default_constructible_v<TypeParam> && !std::is_destructible_v<TypeParam>);
    static_assert(!std::is_copy_constructible_v<TypeParam> && !std::is_copy_assignable_v<TypeParam>);
    static_assert(std::is_same_v<decltype(TypeParam::Create()), SP<TypeParam>>);
    static_assert(std::is_same_v<decltype(std::declval<const TypeParam&>().Clone()), SP<TypeParam>>);
    static_assert(std::is_same_v<decltype(std::declval<const TypeParam&>().CloneBase()), SP<IFormatCodec>>);
    EXPECT_NE(TypeParam::Create(), this->stream_);
}

TYPED_TEST(FormatCodecClassesTest, Create_MakesTheTreeInOrder) {
    EXPECT_EQ(this->stream_->GetProperty(), Facts<TypeParam>::NewTree());
    EXPECT_EQ(this->stream_->GetProperty().GetName(), Facts<TypeParam>::kName);
    EXPECT_FALSE(this->stream_->IsUndefined());
    EXPECT_EQ(this->stream_->GetPrivateData(), nullptr);
    EXPECT_EQ(this->stream_->GetAssetTrack(), nullptr);
    EXPECT_EQ(this->stream_->GetRefCount(), 1);
}

TYPED_TEST(FormatCodecClassesTest, GetCodecType_IsTheKind) {
    const SP<const IFormatCodec> base = this->stream_;
    EXPECT_EQ(base->GetCodecType(), Facts<TypeParam>::kKind);
    EXPECT_EQ(static_cast<int>(base->GetCodecType()), Facts<TypeParam>::kCode);
}

TYPED_TEST(FormatCodecClassesTest, SetProperty_AddsOnlyTheTwoMetadataNodes) {
    this->stream_->SetProperty(Tree("x", {Property("bitrate", 5)}));
    EXPECT_EQ(this->stream_->GetProperty(),
              Tree("x", {Property("bitrate", 5), Property("metadata"), Property("stream_metadata")}));
    EXPECT_FALSE(this->stream_->IsUndefined());
}

TYPED_TEST(FormatCodecClassesTest, SetProperty_WithoutANameLeavesTheKind) {
    this->stream_->SetProperty(Property(""));
    EXPECT_TRUE(this->stream_->IsUndefined());
    this->ExpectClassOf(*this->stream_);
    this->ExpectClassOf(*this->stream_->CloneBase());
    EXPECT_TRUE(this->stream_->Clone()->IsUndefined());
    this->stream_->SetProperty(Property("x"));
    EXPECT_FALSE(this->stream_->IsUndefined());
}

TYPED_TEST(FormatCodecClassesTest, SetProperty_OfALeafThrowsAndChangesNothing) {
    Quenzo::Testing::ExpectPropertyFailure<Core::MethodIsNotApplicable>(
        [&] { this->stream_->SetProperty(Property("leaf", "text")); }, {"leaf", PropertyTypes::String, "SetChild"});
    EXPECT_EQ(this->stream_->GetProperty(), Facts<TypeParam>::NewTree());
}

TYPED_TEST(FormatCodecClassesTest, Clone_KeepsTheClass) {
    this->ExpectClassOf(*this->stream_->Clone());
    this->ExpectClassOf(*this->stream_->CloneBase());
    const SP<const IFormatCodec> base = this->stream_;
    this->ExpectClassOf(*base->CloneBase()->CloneBase());
}

TYPED_TEST(FormatCodecClassesTest, Clone_CopiesTheTree) {
    Put(*this->stream_, Property("bitrate", 5));
    const SP<const IFormatCodec> clone = this->stream_->Clone();
    const SP<const IFormatCodec> baseClone = this->stream_->CloneBase();
    EXPECT_EQ(clone->GetProperty(), this->stream_->GetProperty());
    EXPECT_EQ(baseClone->GetProperty(), this->stream_->GetProperty());
    EXPECT_TRUE(this->stream_->Compare(clone));
    EXPECT_TRUE(clone->Compare(baseClone));
}

TYPED_TEST(FormatCodecClassesTest, Clone_IsIndependentOfItsSource) {
    const SP<TypeParam> clone = this->stream_->Clone();
    Put(*clone, Property("bitrate", 5));
    EXPECT_EQ(this->stream_->GetProperty(), Facts<TypeParam>::NewTree());
    this->stream_->SetMetadata(Property("metadata", "source"));
    EXPECT_EQ(clone->GetMetadata(), Property("metadata"));
    clone->SetPrivateData(MakeBlob());
    clone->SetAssetTrack(MakeTrack());
    EXPECT_EQ(this->stream_->GetPrivateData(), nullptr);
    EXPECT_EQ(this->stream_->GetAssetTrack(), nullptr);
}

TYPED_TEST(FormatCodecClassesTest, Clone_SharesTheAttachments) {
    const SP<const IBlob> blob = MakeBlob();
    const auto track = MakeTrack();
    this->stream_->SetPrivateData(blob);
    this->stream_->SetAssetTrack(track);
    const SP<IFormatCodec> clone = this->stream_->Clone();
    EXPECT_EQ(clone->GetPrivateData(), blob);
    EXPECT_EQ(blob->GetRefCount(), 3);
    EXPECT_EQ(clone->GetAssetTrack(), track);
    EXPECT_EQ(track.use_count(), 3);
    const SP<IFormatCodec> baseClone = this->stream_->CloneBase();
    EXPECT_EQ(baseClone->GetPrivateData(), blob);
    EXPECT_EQ(blob->GetRefCount(), 4);
    EXPECT_EQ(baseClone->GetAssetTrack(), track);
    EXPECT_EQ(track.use_count(), 4);
}

TYPED_TEST(FormatCodecClassesTest, Clone_CountsReferencesAnew) {
    const std::vector<SP<TypeParam>> references(4, this->stream_);
    EXPECT_EQ(this->stream_->GetRefCount(), 5);
    EXPECT_EQ(this->stream_->Clone()->GetRefCount(), 1);
    EXPECT_EQ(this->stream_->CloneBase()->GetRefCount(), 1);
    EXPECT_EQ(this->stream_->GetRefCount(), 5);
}

TYPED_TEST(FormatCodecClassesTest, Compare_TakesNoNoticeOfTheAttachments) {
    const SP<TypeParam> other = TypeParam::Create();
    other->SetPrivateData(MakeBlob());
    other->SetAssetTrack(MakeTrack());
    EXPECT_TRUE(this->stream_->Compare(other));
    EXPECT_TRUE(other->Compare(this->stream_));
}

TYPED_TEST(FormatCodecClassesTest, Release_OfTheLastReferenceDestroysTheWholeObject) {
    const SP<const IBlob> blob = MakeBlob();
    int destroyed = 0;
    SP<const IFormat> first;
    {
        const SP<Watched<TypeParam>> stream(new Watched<TypeParam>(destroyed));
        stream->SetPrivateData(blob);
        first = stream;
        EXPECT_EQ(first->GetRefCount(), 2);
    }
    EXPECT_EQ(destroyed, 0);
    first->AddRef();
    EXPECT_EQ(first->Release(), 1);
    first.reset();
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(blob->GetRefCount(), 1);
}

// The functions that each class overrides, in the slots that the base gave them.
TYPED_TEST(FormatCodecClassesTest, VirtualFunctions_StandInTheSlotsOfTheBase) {
    EXPECT_EQ(VirtualSlot(&TypeParam::GetCodecType), 7U);
    EXPECT_EQ(VirtualSlot(&TypeParam::CloneBase), 14U);
    EXPECT_EQ(VirtualSlot(&TypeParam::Clone), std::nullopt);
}

TYPED_TEST(FormatCodecClassesTest, Base_IsAtTheStart) {
    const IFormatCodec& base = *this->stream_;
    EXPECT_EQ(static_cast<const void*>(&base), static_cast<const void*>(this->stream_.get()));
}

TYPED_TEST(FormatCodecClassesTest, Clone_OfAnyTreeIsEqualAndIndependent) {
    EXPECT_TRUE(rc::check([] {
        const SP<TypeParam> source = TypeParam::Create();
        source->SetProperty(*Quenzo::Testing::AnyNode(3));
        const Property before = source->GetProperty();
        const SP<TypeParam> clone = source->Clone();
        RC_ASSERT(clone->GetProperty() == before);
        clone->SetMetadata(Property("metadata", "of the clone"));
        RC_ASSERT(source->GetProperty() == before);
    }));
}

TEST(FormatCodecClassesSlotTest, Language_FollowsTheSlotsOfTheBase) {
    EXPECT_EQ(VirtualSlot(&Audio::GetLanguage), 15U);
    EXPECT_EQ(VirtualSlot(&Audio::SetLanguage), 16U);
}

TEST(FormatCodecClassesSlotTest, OtherFunctions_AreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&Audio::ExistsLanguage), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Audio::GetChannelLayout), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Audio::SetChannelLayout), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Audio::GetSampleInfo), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Audio::SetBlockAlignment), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Subtitle::GetSubtitleHeader), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Video::GetFrameInfo), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Video::InitByFrameAspect), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Video::SetColorSpace), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Video::SetDisplayMatrix), std::nullopt);
    EXPECT_EQ(VirtualSlot(&Video::IsHardwareContextEnabled), std::nullopt);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
