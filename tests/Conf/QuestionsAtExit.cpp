// Asks the library from the destructor of a global object. Whatever main asked for has been made after that object and
// would go before it, did it not stay until the library goes. Ends with status 1 when an answer is wrong.

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>

#include <cstdio>
#include <string>
#include <vector>

#include <unistd.h>

namespace Quenzo::Conf {
namespace {

int wrong = 0;

void Expect(bool isRight, const char* what) {
    if (!isRight) {
        std::fprintf(stderr, "wrong: %s\n", what);
        ++wrong;
    }
}

#define EXPECT(condition) Expect(condition, #condition)

void AskForCodecs() {
    EXPECT(GetAllVideoCodecs().size() == 195);
    EXPECT(GetAllAudioCodecs().size() == 134);
    EXPECT(GetAllSubtitleCodecs().size() == 22);
    EXPECT(GetAllCodecIds().size() == 360);
    EXPECT(GetDisabledDecoderList().at(3) == "CODEC_ID_AMR_WB");
    EXPECT(GetDisabledEncoderList().at(5) == "CODEC_ID_FFV1");
    EXPECT(GetBlackListedEncoders().at(1) == "CODEC_ID_MLP");
    EXPECT(GetBlackListedDecoders().at(0) == "CODEC_ID_TRUEHD");
    EXPECT(GetProprietaryCodecs().at(3) == "CODEC_ID_MPEG1VIDEO");
}

void AskForFormats() {
    EXPECT(GetRAWImageFormatList().at(0).size() > 15);
    EXPECT(GetHEIFImageFormatList().at(2) == "heics");
    EXPECT(GetQZPFormatList().size() == 1);
    EXPECT(GetCDFormatList().at(0) == "cda");
    EXPECT(GetAudioContainerList().at(19) == "f4a");
    EXPECT(GetTextSubtitleContainerList().at(2) == "srt");
    EXPECT(GetDisabledFormatParserList().empty());
    EXPECT(GetDisabledFormatMuxerList().empty());
    EXPECT(GetExternalDecoderList().empty());
    EXPECT(GetImageContainerSet(AnimatedImages::Include).count("apng") == 1);
    EXPECT(GetImageContainerSet(AnimatedImages::Exclude).count("bmp") == 1);
    EXPECT(GetFormatExtensionList().size() == 137);
}

void AskForImplementations() {
    EXPECT(GetMuxerImplList().at(0) == "FFMPEG_IMPL");
    EXPECT(GetParserImplList().size() == 4);
    EXPECT(GetDecoderImplList().size() == 4);
    EXPECT(GetEncoderImplList().size() == 5);
    EXPECT(GetAllImplList().at(9) == "MEDIA_CODEC_NDK_OGL_IMPL");
}

void AskByName() {
    EXPECT(GetDefaultFileExtensionForContainer("matroska") == "mkv");
    EXPECT(GetExtensionsByFormat("jpeg") == (std::vector<std::string>{"jpeg", "jpg", "jpe"}));
    EXPECT(GetFormatsByExtension("mp4") == (std::vector<std::string>{"mp4", "psp", "ipod"}));
    EXPECT(GetFormatsByExtension("unknown").empty());
    EXPECT(UTI::FindFormatID("com.sony.arw-raw-image") == "com.sony.arw-raw-image");
    EXPECT(UTI::FindCodecID("public.jpeg") == "CODEC_ID_MJPEG");
    EXPECT(UTI::FindCodecID("unknown").empty());
    EXPECT(UTI::FindAnimatedFormatID("public.png") == "apng");
}

void AskForAll() {
    AskForCodecs();
    AskForFormats();
    AskForImplementations();
    AskByName();
}

class AsksAtExit {
public:
    AsksAtExit() = default;
    AsksAtExit(const AsksAtExit&) = delete;
    AsksAtExit& operator=(const AsksAtExit&) = delete;
    ~AsksAtExit() {
        AskForAll();
        if (wrong != 0) {
            _exit(1);
        }
    }
};

const AsksAtExit asksAtExit;

}  // namespace
}  // namespace Quenzo::Conf

int main() { Quenzo::Conf::AskForAll(); }
