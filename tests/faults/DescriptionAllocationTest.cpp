// Covers what descriptions do when memory runs out, at each allocation: making, cloning and replacing the tree happen
// as a whole or not at all; a setter of several keys may have stored some, and completes when it is called again.

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/IFormatFile.h>
#include <tests/faults/EveryAllocation.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

namespace Quenzo::Conf {
namespace {

using Core::Property;
using Quenzo::Testing::ExpectAllOrNothing;
using Quenzo::Testing::FailEveryAllocation;

template <typename T>
Property TreeOf(const SP<T>& description) {
    return description != nullptr ? description->GetProperty() : Property();
}

void FillVideo(IFormatCodecVideo& video) {
    video.InitByFrameAspect(720, 576, 16, 9);
    video.SetFrameRate(30000, 1001);
    video.SetColorSpace({ColorPrimaries::BT709, TransferFunction::BT709, YCbCrMatrix::BT709});
    video.SetPixelFormat(PixFmt::YUV420P);
    video.SetDisplayMatrix(DisplayMatrix(ImageOrientation::Rotated90));
    video.SetSphericalInfo({1, 2, 3});
    video.SetPrivateData(Blob::Create({1, 2, 3}));
}

SP<IFormatCodecVideo> MakeVideo() {
    auto video = IFormatCodecVideo::Create();
    FillVideo(*video);
    return video;
}

void FillAudio(IFormatCodecAudio& audio) {
    SampleInfo info;
    info.Init(SampleFormats::SAMPLE_FMT_S16, 48000, ChannelLayout::STEREO);
    audio.SetSampleInfo(info);
    audio.SetBlockAlignment(4);
    audio.SetLanguage("a language with a name that takes memory");
}

TEST(DescriptionAllocationTest, Create_MakesAWholeDescription) {
    const auto state = [](const auto& made) { return std::pair(TreeOf(made), made != nullptr); };
    ExpectAllOrNothing([] { return SP<IFormatCodecVideo>(); }, [](auto& made) { made = IFormatCodecVideo::Create(); },
                       state);
    ExpectAllOrNothing([] { return SP<IFormatCodecAudio>(); }, [](auto& made) { made = IFormatCodecAudio::Create(); },
                       state);
    ExpectAllOrNothing([] { return SP<IFormatCodecSubtitle>(); },
                       [](auto& made) { made = IFormatCodecSubtitle::Create(); }, state);
    ExpectAllOrNothing([] { return SP<IFormatCodec>(); }, [](auto& made) { made = IFormatCodec::CreateUndefined(); },
                       state);
    ExpectAllOrNothing([] { return SP<IFormatFile>(); }, [](auto& made) { made = IFormatFile::Create(); }, state);
}

TEST(DescriptionAllocationTest, Clone_MakesAWholeCopy) {
    struct Clones {
        SP<IFormatCodecVideo> video = MakeVideo();
        SP<IFormatFile> file = IFormatFile::Create();
        SP<IFormatCodec> base;
        SP<IFormatFile> copy;
    };
    const auto clone = [](Clones& clones) {
        auto copy = clones.file->Clone();
        clones.base = clones.video->CloneBase();
        clones.copy = std::move(copy);
    };
    const auto state = [](const Clones& clones) {
        return std::tuple(TreeOf(clones.base), TreeOf(clones.copy), clones.video->GetRefCount(),
                          clones.video->GetPrivateData()->GetRefCount());
    };
    ExpectAllOrNothing([] { return Clones(); }, clone, state);
}

TEST(DescriptionAllocationTest, SetProperty_ReplacesTheWholeTree) {
    Property bare("a tree without any of the children that every description has");
    const auto set = [&bare](const auto& description) { description->SetProperty(bare); };
    ExpectAllOrNothing(MakeVideo, set, TreeOf<IFormatCodecVideo>);
    ExpectAllOrNothing(IFormatFile::Create, set, TreeOf<IFormatFile>);
    bare.SetChild(IFormat::TAG_METADATA);
    ExpectAllOrNothing(MakeVideo, set, TreeOf<IFormatCodecVideo>);
}

TEST(DescriptionAllocationTest, SetMetadata_AndItsSiblings) {
    Property options = MakeVideo()->GetOptionsEncode();
    options.SetChildT<std::string>("an option with a long name", "and a value that takes memory");
    ExpectAllOrNothing(
        MakeVideo, [&](const auto& video) { video->SetMetadata(options); }, TreeOf<IFormatCodecVideo>);
    ExpectAllOrNothing(
        MakeVideo, [&](const auto& video) { video->SetOptionsEncode(options); }, TreeOf<IFormatCodecVideo>);
    ExpectAllOrNothing(
        MakeVideo, [&](const auto& video) { video->SetStreamMetadata(options); }, TreeOf<IFormatCodecVideo>);
    const auto setText = [](const auto& file) {
        file->SetQuenzoSpecificMetadata("a text that takes memory, being long");
    };
    ExpectAllOrNothing(IFormatFile::Create, setText, TreeOf<IFormatFile>);
}

// Each key that the complete description has is absent or has its final value.
void ExpectNoHalfValues(const Property& tree, const Property& complete) {
    for (const Property& child : tree) {
        EXPECT_EQ(child, complete[child.GetName()]);
    }
}

template <typename T>
void ExpectCompletable(SP<T> (*create)(), void (*fill)(T&)) {
    const SP<T> whole = create();
    fill(*whole);
    const Property complete = whole->GetProperty();
    const long failures = FailEveryAllocation(
        create, [fill](const SP<T>& description) { fill(*description); },
        [&](const SP<T>& description, bool hasFailed) {
            if (hasFailed) {
                Property part = description->GetProperty();
                part.RemoveChild(IFormat::TAG_METADATA);
                ExpectNoHalfValues(part, complete);
                fill(*description);
            }
            EXPECT_EQ(description->GetProperty(), complete);
        });
    EXPECT_GT(failures, 5);
}

TEST(DescriptionAllocationTest, Setters_OfSeveralKeysCompleteWhenTheyAreCalledAgain) {
    ExpectCompletable<IFormatCodecVideo>(IFormatCodecVideo::Create, FillVideo);
    ExpectCompletable<IFormatCodecAudio>(IFormatCodecAudio::Create, FillAudio);
}

TEST(DescriptionAllocationTest, Getters_AndComparing) {
    const SP<IFormatCodecVideo> video = MakeVideo();
    const SP<IFormatCodecVideo> same = MakeVideo();
    const Property before = video->GetProperty();
    const auto read = [&](int& answers) {
        const bool areEqual = video->Compare(same);
        const bool isTurned = video->GetDisplayMatrix() == DisplayMatrix(ImageOrientation::Rotated90);
        answers = (areEqual ? 1 : 0) + (isTurned ? 2 : 0);
    };
    ExpectAllOrNothing([] { return 0; }, read, [](int answers) { return answers; });
    EXPECT_EQ(video->GetProperty(), before);
}

TEST(DescriptionAllocationTest, PrintContent_MarksTheStreamWhenItBreaksOff) {
    const SP<IFormatCodecVideo> video = MakeVideo();
    std::ostringstream whole;
    video->PrintContent(whole);
    const long failures = FailEveryAllocation([] { return std::ostringstream(); },
                                              [&video](std::ostringstream& stream) { video->PrintContent(stream); },
                                              [&whole](const std::ostringstream& stream, bool hasFailed) {
                                                  EXPECT_TRUE(hasFailed || stream.bad() || stream.str() == whole.str());
                                              });
    EXPECT_GT(failures, 5);
}

TEST(DescriptionAllocationTest, Blob_TakesItsBytesOrNothing) {
    ExpectAllOrNothing([] { return SP<Blob>(); },
                       [](SP<Blob>& blob) {
                           blob = Blob::Create({1, 2, 3});
                       },
                       [](const SP<Blob>& blob) { return blob != nullptr && blob->GetSize() == 3; });
}

}  // namespace
}  // namespace Quenzo::Conf
