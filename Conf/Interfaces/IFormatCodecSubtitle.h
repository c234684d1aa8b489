#pragma once

#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <string>

namespace Quenzo::Conf {

/// The description of a subtitle stream, of text or of pictures. Its root is named TAG_FORMAT_CODEC_SUBTITLE.
class QUENZO_API IFormatCodecSubtitle : public IFormatCodec, public SubtitleVocabulary {
public:
    IFormatCodecSubtitle& operator=(const IFormatCodecSubtitle& other) = delete;

    /// A description with the children of every stream and no others.
    static SP<IFormatCodecSubtitle> Create();

    /// An independent tree, the same attachments (and so the same header), references counted anew.
    SP<IFormatCodecSubtitle> Clone() const;
    SP<IFormatCodec> CloneBase() const override;

    /// SubtitlesText, for picture subtitles too.
    MediaType GetCodecType() const override;

    /// The bytes of the private data, which for text subtitles hold the styles and other things that go before the
    /// lines; empty when there are none.
    std::string GetSubtitleHeader() const;

protected:
    IFormatCodecSubtitle();
    IFormatCodecSubtitle(const IFormatCodecSubtitle& other) = default;
    ~IFormatCodecSubtitle() override;
};

}  // namespace Quenzo::Conf
