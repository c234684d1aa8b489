#pragma once

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/SampleFormatsDescription.h>
#include <Conf/Interfaces/SampleInfo.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <string>

namespace Quenzo::Conf {

/// The description of an audio stream: typed accessors over the tree, whose root is named TAG_FORMAT_CODEC_AUDIO.
/// Layouts and sample formats are stored as the text ids of their tables.
///
/// A getter that names no default raises PropertyException when its key is missing or holds another type, and
/// FormatException when the text stored is not in its table. A setter raises FormatException for a value that is not in
/// its table; keys that it has stored before stay stored.
class QUENZO_API IFormatCodecAudio : public IFormatCodec, public AudioVocabulary {
public:
    IFormatCodecAudio& operator=(const IFormatCodecAudio& other) = delete;

    /// A description with the children of every stream and no others.
    static SP<IFormatCodecAudio> Create();

    /// An independent tree, the same attachments, references counted anew.
    SP<IFormatCodecAudio> Clone() const;
    SP<IFormatCodec> CloneBase() const override;

    MediaType GetCodecType() const override;

    /// The channel layout, stored under TAG_LAYOUT.
    ChannelLayout GetChannelLayout() const;
    void SetChannelLayout(ChannelLayout layout);

    /// The sample format, stored under TAG_SAMPLE_FORMAT. Setting it stores its bits per sample, under
    /// TAG_BITS_PER_SAMPLE, too.
    SampleFormats GetSampleFormat() const;
    void SetSampleFormat(SampleFormats format);

    /// Sample rate (of the stored number the low 32 bits), sample format and channel layout together; setting them
    /// stores the format with its bits per sample, then the layout, then the rate.
    SampleInfo GetSampleInfo() const;
    void SetSampleInfo(const SampleInfo& info);

    /// The alignment of a block in bytes; 0 when it is missing.
    int GetBlockAlignment() const;
    void SetBlockAlignment(int alignment);

    /// The language of the stream, kept in the metadata; empty when it is missing. Setting it raises PropertyException
    /// when the metadata has been removed.
    bool ExistsLanguage() const;
    virtual std::string GetLanguage() const;
    virtual void SetLanguage(const std::string& language);

protected:
    IFormatCodecAudio();
    IFormatCodecAudio(const IFormatCodecAudio& other) = default;
    ~IFormatCodecAudio() override;
};

}  // namespace Quenzo::Conf
