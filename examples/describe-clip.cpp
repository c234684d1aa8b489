// Describes a clip, its container and three streams, and prints the trees that hold the descriptions.

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/IFormatFile.h>

#include <iostream>
#include <string_view>

using namespace Quenzo;
using namespace Quenzo::Conf;

namespace {

// A description's keys without an accessor are written into its tree: take a copy, change it, put it back.
template <typename T, typename Description>
void Set(const SP<Description>& description, const std::string& key, const T& value) {
    Core::Property tree = description->GetProperty();
    tree.SetChildT<T>(key, value);
    description->SetProperty(tree);
}

SP<IFormatFile> DescribeFile() {
    auto file = IFormatFile::Create();
    Set<std::string>(file, IFormatFile::TAG_CONTAINER, IFormatFile::FORMAT_MATROSKA);
    Set<std::string>(file, IFormatFile::TAG_FILE_PATH, "holiday.mkv");
    Set<std::string>(file, IFormatFile::TAG_TITLE, "Holiday");
    return file;
}

// 10-bit video in UHD, high dynamic range, shot with the camera held upright.
SP<IFormatCodecVideo> DescribeVideo() {
    auto video = IFormatCodecVideo::Create();
    Set<std::string>(video, IFormatCodecVideo::TAG_CODEC_ID, IFormatCodecVideo::CODEC_ID_H265);
    video->InitByPixelAspect(3840, 2160, 1, 1);
    video->SetFrameRate(30000, 1001);
    video->SetPixelFormat(PixFmt::P010);
    video->SetColorSpace({ColorPrimaries::BT2020, TransferFunction::SMPTE2084, YCbCrMatrix::BT2020_NCL});
    video->SetDisplayMatrix(DisplayMatrix(ImageOrientation::Rotated90));
    return video;
}

SP<IFormatCodecAudio> DescribeAudio() {
    auto audio = IFormatCodecAudio::Create();
    Set<std::string>(audio, IFormatCodecAudio::TAG_CODEC_ID, IFormatCodecAudio::CODEC_ID_AC3);
    SampleInfo info;
    info.Init(SampleFormats::SAMPLE_FMT_FLTP, 48000, ChannelLayout::_5POINT1);
    audio->SetSampleInfo(info);
    audio->SetLanguage("eng");
    return audio;
}

SP<IFormatCodecSubtitle> DescribeSubtitle() {
    constexpr std::string_view header = "[Script Info]\nScriptType: v4.00\n";
    auto subtitle = IFormatCodecSubtitle::Create();
    Set<std::string>(subtitle, IFormatCodecSubtitle::TAG_CODEC_ID, IFormatCodecSubtitle::CODEC_ID_SSA);
    subtitle->SetPrivateData(Blob::Create({header.begin(), header.end()}));
    return subtitle;
}

}  // namespace

int main() {
    DescribeFile()->PrintContent(std::cout);
    const auto video = DescribeVideo();
    video->PrintContent(std::cout);
    DescribeAudio()->PrintContent(std::cout);
    const auto subtitle = DescribeSubtitle();
    subtitle->PrintContent(std::cout);

    std::cout << "\nthe video is " << video->GetFrameInfo() << ", to be turned by "
              << video->GetDisplayMatrix().GetRotation() << " degrees\n"
              << "the subtitles have a header of " << subtitle->GetSubtitleHeader().size() << " bytes\n";
}
