// Covers constants in a program that is not position-independent: such a program holds a copy of each constant that it
// names, whose bytes the loader takes from the library before any code of the library has run. The library and the
// program must see the same value all the same, whether the compiler made it or code makes it at load.

#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>

namespace Quenzo::Conf {
namespace {

// NOLINTBEGIN(cert-err58-cpp): code that runs at load is what is tested here.
const std::string shortAtLoad = IFormatCodecVideo::TAG_WIDTH;
const std::string longAtLoad = IFormatCodecVideo::TAG_COLOR_TRANSFER_FUNCTION;
// NOLINTEND(cert-err58-cpp)

const void* ModuleOf(const void* object) {
    Dl_info info = {};
    return dladdr(object, &info) != 0 ? info.dli_fbase : nullptr;
}

TEST(CopiedConstantsTest, Constants_StandInTheProgram) {
    const void* const program = ModuleOf(&shortAtLoad);
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(ModuleOf(&IFormatCodecVideo::TAG_WIDTH), program);
    EXPECT_EQ(ModuleOf(&IFormatCodecVideo::TAG_COLOR_TRANSFER_FUNCTION), program);
}

TEST(CopiedConstantsTest, Constants_HaveTheirValueAtLoadAndLater) {
    EXPECT_EQ(shortAtLoad, "width");
    EXPECT_EQ(longAtLoad, "color_transfer_function");
    EXPECT_EQ(IFormatCodecVideo::TAG_WIDTH, "width");
    EXPECT_EQ(IFormatCodecVideo::TAG_COLOR_TRANSFER_FUNCTION, "color_transfer_function");
    EXPECT_EQ(FileVocabulary::FORMAT_QUICKTIME, "mov,mp4,m4a,3gp,3g2,mj2");
    const std::string copy = FileVocabulary::FORMAT_MP4;
    EXPECT_EQ(copy, "mp4");
}

TEST(CopiedConstantsTest, Library_SeesTheValuesThatTheProgramSees) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetColorSpace({ColorPrimaries::BT709, TransferFunction::BT709, YCbCrMatrix::BT709});
    const Core::Property& tree = video->GetProperty();
    EXPECT_EQ(tree[IFormatCodecVideo::TAG_COLOR_TRANSFER_FUNCTION].GetInt64(), 1);
    EXPECT_EQ(tree["color_transfer_function"].GetInt64(), 1);
    EXPECT_EQ(tree[IFormatCodecVideo::TAG_COVER_FLAG], tree["cover_flag"]);
}

}  // namespace
}  // namespace Quenzo::Conf
