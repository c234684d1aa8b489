// A program of somebody else's: it includes the README's example, runs it, and catches an exception of the library's by
// its class.

#include <readme-example.h>

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/Stub.h>

#include <fstream>
#include <iostream>
#include <iterator>

// Read at load, before main: the constant has to be complete by then.
static const std::string loadedCodec = Quenzo::Conf::IFormatCodecVideo::CODEC_ID_MPEG2VIDEO_XVMC;

int main() {
    std::ofstream("web.json") << R"({"container":"mp4","$$STREAMS$$":{"video":{"codec_id":"CODEC_ID_H264"}}})";
    DescribeJob();
    std::ifstream file("job.json");
    const std::string job(std::istreambuf_iterator<char>(file), {});
    if (job.find("holiday.mov") == std::string::npos) {
        std::cerr << "the example saved no job\n";
        return 1;
    }
    if (loadedCodec != "CODEC_ID_MPEG2VIDEO_XVMC") {
        std::cerr << "a constant was not complete at load\n";
        return 1;
    }
    if (Quenzo::Conf::GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 30) != 9109810) {
        std::cerr << "another bit rate than everywhere\n";
        return 1;
    }
    try {
        Quenzo::Conf::IsAudioBitrateRequired("CODEC_ID_H264");
        std::cerr << "nothing was thrown\n";
        return 1;
    } catch (const Quenzo::Conf::FormatException& failure) {
        std::cout << failure.what() << '\n';
    }
    return 0;
}
