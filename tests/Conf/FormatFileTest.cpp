// Covers the description of a file: its tree, cloning, chapters, the system's own metadata, its counting, layout and
// slots, and comparing it with descriptions of other classes.

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/IFormatFile.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/foundation/TreeGenerator.h>
#include <tests/foundation/VirtualSlots.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;
using Quenzo::Testing::CallVirtualSlot;
using Quenzo::Testing::VirtualSlot;

// A virtual base cannot be left by a static cast.
template <typename Base, typename Derived>
concept ReachedByAStaticCast = requires(Base* base) {
    static_cast<Derived*>(base);
};
static_assert(std::is_convertible_v<IFormatFile*, IFormat*> && !ReachedByAStaticCast<IFormat, IFormatFile>);
static_assert(std::is_convertible_v<IFormatCodec*, IFormat*> && ReachedByAStaticCast<IFormat, IFormatCodec>);

// A table of its own and the counter, then the base.
static_assert(sizeof(IFormatFile) == sizeof(void*) + sizeof(RefCountImpl) + sizeof(IFormat));

static_assert(std::has_virtual_destructor_v<IFormatFile>);
static_assert(!std::is_default_constructible_v<IFormatFile> && !std::is_destructible_v<IFormatFile>);
static_assert(!std::is_copy_constructible_v<IFormatFile> && !std::is_copy_assignable_v<IFormatFile>);
static_assert(std::is_same_v<decltype(IFormatFile::Create()), SP<IFormatFile>>);
static_assert(std::is_same_v<decltype(std::declval<IFormatFile&>().Clone()), SP<IFormatFile>>);

// The tree is read and replaced as the base does it.
static_assert(std::is_same_v<decltype(&IFormatFile::GetProperty), const Property& (IFormat::*)() const>);
static_assert(std::is_same_v<decltype(&IFormatFile::SetProperty), void (IFormat::*)(const Property&)>);

static_assert(std::is_abstract_v<IFormatChapterList> && std::is_base_of_v<IRefCountable, IFormatChapterList>);

Property FileTree(std::vector<Property> more) {
    Property tree("format_file");
    tree.SetChild("metadata");
    for (Property& child : more) {
        tree.Add(std::move(child));
    }
    return tree;
}

class Chapters : public RefCounted<IFormatChapterList> {};

class WatchedFile : public IFormatFile {
public:
    explicit WatchedFile(int& destroyed) : IFormat("watched"), destroyed_(destroyed) {}
    WatchedFile(const WatchedFile&) = delete;
    WatchedFile& operator=(const WatchedFile&) = delete;

protected:
    ~WatchedFile() override { ++destroyed_; }

private:
    int& destroyed_;
};

TEST(FormatFileTest, Create_MakesATreeWithMetadataOnly) {
    const SP<IFormatFile> file = IFormatFile::Create();
    EXPECT_EQ(file->GetProperty(), Tree("format_file", {Property("metadata")}));
    EXPECT_EQ(file->GetMetadata(), Property("metadata"));
    EXPECT_EQ(file->GetRefCount(), 1);
    EXPECT_NE(IFormatFile::Create(), file);
}

TEST(FormatFileTest, Clone_CopiesTheTree) {
    const SP<IFormatFile> file = IFormatFile::Create();
    Put(*file, Property("container", "mp4"));
    file->SetQuenzoSpecificMetadata("text");
    const SP<IFormatFile> clone = file->Clone();
    EXPECT_NE(clone, file);
    const IFormatFile& object = *clone;
    EXPECT_EQ(typeid(object), typeid(IFormatFile));
    EXPECT_EQ(clone->GetProperty(),
              FileTree({Property("container", "mp4"), Property("QUENZO_SPECIFIC_METADATA", "text")}));
    EXPECT_TRUE(clone->Compare(file));
}

TEST(FormatFileTest, Clone_IsIndependentOfItsSource) {
    const SP<IFormatFile> file = IFormatFile::Create();
    const SP<IFormatFile> clone = file->Clone();
    Put(*clone, Property("container", "mp4"));
    EXPECT_EQ(file->GetProperty(), FileTree({}));
    file->SetMetadata(Property("metadata", "source"));
    EXPECT_EQ(clone->GetMetadata(), Property("metadata"));
    EXPECT_FALSE(clone->Compare(file));
}

TEST(FormatFileTest, Clone_CountsReferencesAnew) {
    const SP<IFormatFile> file = IFormatFile::Create();
    const std::vector<SP<IFormatFile>> references(4, file);
    EXPECT_EQ(file->GetRefCount(), 5);
    EXPECT_EQ(file->Clone()->GetRefCount(), 1);
    EXPECT_EQ(file->GetRefCount(), 5);
}

RC_GTEST_PROP(FormatFileTest, Clone_OfAnyTreeIsEqualAndIndependent, ()) {
    const SP<IFormatFile> file = IFormatFile::Create();
    file->SetProperty(*Quenzo::Testing::AnyNode(3));
    const Property before = file->GetProperty();
    const SP<IFormatFile> clone = file->Clone();
    RC_ASSERT(clone->GetProperty() == before);
    clone->SetMetadata(Property("metadata", "of the clone"));
    RC_ASSERT(file->GetProperty() == before);
}

TEST(FormatFileTest, SetProperty_AddsMetadataOnly) {
    const SP<IFormatFile> file = IFormatFile::Create();
    file->SetProperty(Tree("x", {Property("container", "mp4")}));
    EXPECT_EQ(file->GetProperty(), Tree("x", {Property("container", "mp4"), Property("metadata")}));
    file->SetProperty(Property(""));
    EXPECT_EQ(file->GetProperty(), Tree("", {Property("metadata")}));
    const Property whole = Tree("y", {Tree("metadata", {Property("title", "z")}), Property("file_size", 5)});
    file->SetProperty(whole);
    EXPECT_EQ(file->GetProperty(), whole);
}

TEST(FormatFileTest, SetProperty_OfALeafThrowsAndChangesNothing) {
    const SP<IFormatFile> file = IFormatFile::Create();
    Quenzo::Testing::ExpectPropertyFailure<Core::MethodIsNotApplicable>([&] { file->SetProperty(Property("leaf", 5)); },
                                                                        {"leaf", PropertyTypes::Int64, "SetChild"});
    EXPECT_EQ(file->GetProperty(), FileTree({}));
}

TEST(FormatFileTest, SetChapters_KeepsNothing) {
    const SP<IFormatFile> file = IFormatFile::Create();
    EXPECT_EQ(file->GetChapters(), nullptr);
    const SP<IFormatChapterList> chapters(new Chapters());
    file->SetChapters(chapters);
    EXPECT_EQ(file->GetChapters(), nullptr);
    EXPECT_EQ(chapters->GetRefCount(), 1);
    file->SetChapters(nullptr);
    EXPECT_EQ(file->GetChapters(), nullptr);
    EXPECT_EQ(file->GetProperty(), FileTree({}));
    EXPECT_EQ(file->Clone()->GetChapters(), nullptr);
}

TEST(FormatFileTest, QuenzoSpecificMetadata_OfANewDescriptionIsMissing) {
    const SP<IFormatFile> file = IFormatFile::Create();
    EXPECT_FALSE(file->ExistsQuenzoSpecificMetadata());
    ExpectMissing([&] { file->GetQuenzoSpecificMetadata(); }, "format_file", "QUENZO_SPECIFIC_METADATA");
    EXPECT_EQ(file->GetProperty(), FileTree({}));
}

TEST(FormatFileTest, SetQuenzoSpecificMetadata_KeepsTheLastText) {
    const SP<IFormatFile> file = IFormatFile::Create();
    file->SetQuenzoSpecificMetadata("first");
    Put(*file, Property("container", "mp4"));
    file->SetQuenzoSpecificMetadata("second");
    EXPECT_EQ(file->GetProperty(),
              FileTree({Property("QUENZO_SPECIFIC_METADATA", "second"), Property("container", "mp4")}));
    EXPECT_TRUE(file->ExistsQuenzoSpecificMetadata());
    EXPECT_EQ(file->GetQuenzoSpecificMetadata(), "second");
}

TEST(FormatFileTest, SetQuenzoSpecificMetadata_TakesAnyText) {
    const SP<IFormatFile> file = IFormatFile::Create();
    for (const std::string& text : {std::string(), std::string("a\0b\0", 4), std::string(1000, 'x')}) {
        file->SetQuenzoSpecificMetadata(text);
        EXPECT_TRUE(file->ExistsQuenzoSpecificMetadata());
        EXPECT_EQ(file->GetQuenzoSpecificMetadata(), text);
    }
}

TEST(FormatFileTest, QuenzoSpecificMetadata_IsAChildOfTheRoot) {
    const SP<IFormatFile> file = IFormatFile::Create();
    file->SetMetadata(Tree("metadata", {Property("QUENZO_SPECIFIC_METADATA", "x")}));
    EXPECT_FALSE(file->ExistsQuenzoSpecificMetadata());
    Put(*file, Property("quenzo_specific_metadata", "x"));
    EXPECT_FALSE(file->ExistsQuenzoSpecificMetadata());
}

TEST(FormatFileTest, GetQuenzoSpecificMetadata_OfAWrongTypeThrows) {
    const SP<IFormatFile> file = IFormatFile::Create();
    Put(*file, Property("QUENZO_SPECIFIC_METADATA", 5));
    EXPECT_TRUE(file->ExistsQuenzoSpecificMetadata());
    ExpectWrongType([&] { file->GetQuenzoSpecificMetadata(); }, "QUENZO_SPECIFIC_METADATA", PropertyTypes::Int64,
                    "GetString");
    file->SetQuenzoSpecificMetadata("text");
    EXPECT_EQ(file->GetProperty(), FileTree({Property("QUENZO_SPECIFIC_METADATA", "text")}));
}

TEST(FormatFileTest, AddRefAndRelease_CountThroughEveryBase) {
    const SP<IFormatFile> file = IFormatFile::Create();
    const SP<const IFormat> format = file;
    const SP<const IRefCountable> countable = format;
    EXPECT_EQ(file->GetRefCount(), 3);
    EXPECT_EQ(format->GetRefCount(), 3);
    EXPECT_EQ(countable->GetRefCount(), 3);
    countable->AddRef();
    EXPECT_EQ(file->Release(), 3);
    EXPECT_EQ(&format->GetProperty(), &file->GetProperty());
}

TEST(FormatFileTest, Release_OfTheLastReferenceDestroysTheWholeObject) {
    int destroyed = 0;
    SP<const IFormat> last;
    {
        const SP<WatchedFile> file(new WatchedFile(destroyed));
        last = file;
    }
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(last->GetRefCount(), 1);
    last->AddRef();
    EXPECT_EQ(last->Release(), 1);
    last.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(FormatFileTest, Fields_StandBeforeTheBase) {
    const SP<IFormatFile> file = IFormatFile::Create();
    const auto* start = reinterpret_cast<const std::byte*>(file.get());
    const auto* base = reinterpret_cast<const std::byte*>(static_cast<const IFormat*>(file.get()));
    EXPECT_EQ(base - start, static_cast<std::ptrdiff_t>(sizeof(void*) + sizeof(RefCountImpl)));
}

// In the class's own table, before the destructor.
TEST(FormatFileTest, VirtualFunctions_StandInTheirSlots) {
    EXPECT_EQ(VirtualSlot(&IFormatFile::AddRef), 0U);
    EXPECT_EQ(VirtualSlot(&IFormatFile::GetRefCount), 1U);
    EXPECT_EQ(VirtualSlot(&IFormatFile::Release), 2U);
}

TEST(FormatFileTest, Destructor_TakesTheSlotsThreeAndFour) {
    int destroyed = 0;
    alignas(WatchedFile) std::array<std::byte, sizeof(WatchedFile)> memory;
    CallVirtualSlot(::new (memory.data()) WatchedFile(destroyed), 3);
    EXPECT_EQ(destroyed, 1);
    CallVirtualSlot(new WatchedFile(destroyed), 4);
    EXPECT_EQ(destroyed, 2);
}

TEST(FormatFileTest, OtherFunctions_AreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&IFormatFile::Clone), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatFile::GetChapters), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatFile::SetChapters), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatFile::ExistsQuenzoSpecificMetadata), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatFile::GetQuenzoSpecificMetadata), std::nullopt);
    EXPECT_EQ(VirtualSlot(&IFormatFile::SetQuenzoSpecificMetadata), std::nullopt);
}

TEST(FormatFileTest, MediaType_IsNumberedFromZero) {
    static_assert(std::is_same_v<std::underlying_type_t<IFormatFile::MediaType>, std::int32_t>);
    EXPECT_EQ(static_cast<int>(IFormatFile::MediaType::AllFiles), 0);
    EXPECT_EQ(static_cast<int>(IFormatFile::MediaType::Video), 1);
    EXPECT_EQ(static_cast<int>(IFormatFile::MediaType::Audio), 2);
    EXPECT_EQ(static_cast<int>(IFormatFile::MediaType::Subtitles), 3);
    EXPECT_EQ(static_cast<int>(IFormatFile::MediaType::Images), 4);
}

TEST(FormatFileTest, Constants_AreTheClassesOwnNames) {
    EXPECT_EQ(IFormatFile::TAG_FORMAT_FILE, "format_file");
    EXPECT_EQ(IFormatFile::TAG_CONTAINER, "container");
    EXPECT_EQ(IFormatFile::TAG_METADATA, "metadata");
    EXPECT_EQ(IFormatCodecVideo::TAG_WIDTH, "width");
    EXPECT_EQ(IFormatCodecVideo::TAG_STREAM_ID, "stream_id");
    EXPECT_EQ(IFormatCodecAudio::TAG_LAYOUT, "layout");
    EXPECT_EQ(IFormatCodecSubtitle::SUBTITLE_ENCODING_PREFIX, "encoding");
}

// One new description of each class.
std::vector<SP<IFormat>> NewDescriptions() {
    return {IFormatFile::Create(), IFormatCodecVideo::Create(), IFormatCodecAudio::Create(),
            IFormatCodecSubtitle::Create(), IFormatCodec::CreateUndefined()};
}

TEST(DescriptionsCompareTest, Compare_OfNewDescriptionsTellsTheClassesApart) {
    const auto left = NewDescriptions();
    const auto right = NewDescriptions();
    for (std::size_t i = 0; i < left.size(); ++i) {
        for (std::size_t j = 0; j < right.size(); ++j) {
            EXPECT_EQ(left[i]->Compare(right[j]), i == j) << i << ' ' << j;
        }
    }
}

TEST(DescriptionsCompareTest, Compare_OfEqualTreesTakesNoNoticeOfTheClasses) {
    const Property tree = Tree("x", {Property("metadata"), Property("stream_metadata"), Property("bitrate", 5)});
    const auto descriptions = NewDescriptions();
    for (const SP<IFormat>& description : descriptions) {
        description->SetProperty(tree);
    }
    for (const SP<IFormat>& left : descriptions) {
        for (const SP<IFormat>& right : descriptions) {
            EXPECT_TRUE(left->Compare(right));
        }
    }
    Put(*descriptions.front(), Property("bitrate", 6));
    EXPECT_FALSE(descriptions.front()->Compare(descriptions.back()));
    EXPECT_FALSE(descriptions.back()->Compare(descriptions.front()));
}

// A file takes a tree as it is; a stream adds its own metadata.
TEST(DescriptionsCompareTest, SetProperty_GuaranteesWhatEachClassPromises) {
    for (const SP<IFormat>& description : NewDescriptions()) {
        description->SetProperty(Property("x"));
        const bool isFile = boost::dynamic_pointer_cast<IFormatFile>(description) != nullptr;
        EXPECT_EQ(description->GetProperty(), isFile ? Tree("x", {Property("metadata")})
                                                     : Tree("x", {Property("metadata"), Property("stream_metadata")}));
    }
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
