#include <Conf/Interfaces/IFormatCodecSubtitle.h>

namespace Quenzo::Conf {

SP<IFormatCodecSubtitle> IFormatCodecSubtitle::Create() { return SP<IFormatCodecSubtitle>(new IFormatCodecSubtitle()); }

IFormatCodecSubtitle::IFormatCodecSubtitle() : IFormatCodec(TAG_FORMAT_CODEC_SUBTITLE) {}

IFormatCodecSubtitle::~IFormatCodecSubtitle() = default;

SP<IFormatCodecSubtitle> IFormatCodecSubtitle::Clone() const {
    return SP<IFormatCodecSubtitle>(new IFormatCodecSubtitle(*this));
}

SP<IFormatCodec> IFormatCodecSubtitle::CloneBase() const { return Clone(); }

MediaType IFormatCodecSubtitle::GetCodecType() const { return MediaType::SubtitlesText; }

std::string IFormatCodecSubtitle::GetSubtitleHeader() const {
    const SP<const IBlob> header = GetPrivateData();
    if (header == nullptr || header->GetSize() == 0) {
        return {};
    }
    return {header->GetData(), header->GetData() + header->GetSize()};
}

}  // namespace Quenzo::Conf
