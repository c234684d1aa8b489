#include <Conf/Interfaces/IFormatCodecAudio.h>

#include <cstdint>

namespace Quenzo::Conf {

namespace {

const Core::Property* FindLanguage(const Core::Property& tree) {
    const auto metadata = tree.FindChild(FormatVocabulary::TAG_METADATA);
    if (metadata == tree.end()) {
        return nullptr;
    }
    const auto language = metadata->FindChild(CodecVocabulary::TAG_LANGUAGE);
    return language != metadata->end() ? &*language : nullptr;
}

}  // namespace

SP<IFormatCodecAudio> IFormatCodecAudio::Create() { return SP<IFormatCodecAudio>(new IFormatCodecAudio()); }

IFormatCodecAudio::IFormatCodecAudio() : IFormatCodec(TAG_FORMAT_CODEC_AUDIO) {}

IFormatCodecAudio::~IFormatCodecAudio() = default;

SP<IFormatCodecAudio> IFormatCodecAudio::Clone() const { return SP<IFormatCodecAudio>(new IFormatCodecAudio(*this)); }

SP<IFormatCodec> IFormatCodecAudio::CloneBase() const { return Clone(); }

MediaType IFormatCodecAudio::GetCodecType() const { return MediaType::Audio; }

ChannelLayout IFormatCodecAudio::GetChannelLayout() const {
    return LayoutRecord::Find(Tree()[TAG_LAYOUT].GetString()).layout;
}

void IFormatCodecAudio::SetChannelLayout(ChannelLayout layout) {
    Tree().SetChildT<std::string>(TAG_LAYOUT, LayoutRecord::Find(layout).textId);
}

SampleFormats IFormatCodecAudio::GetSampleFormat() const {
    return SampleFmtRecord::Find(Tree()[TAG_SAMPLE_FORMAT].GetString()).format;
}

void IFormatCodecAudio::SetSampleFormat(SampleFormats format) {
    const SampleFmtRecord& row = SampleFmtRecord::Find(format);
    Tree().SetChildT<std::string>(TAG_SAMPLE_FORMAT, row.textId);
    Tree().SetChildT<long long>(TAG_BITS_PER_SAMPLE, row.bits);
}

SampleInfo IFormatCodecAudio::GetSampleInfo() const {
    const auto rate = static_cast<std::int32_t>(Tree()[TAG_SAMPLE_RATE].GetInt64());
    const std::string& format = Tree()[TAG_SAMPLE_FORMAT].GetString();
    const std::string& layout = Tree()[TAG_LAYOUT].GetString();
    const SampleFmtRecord& formatRow = SampleFmtRecord::Find(format);
    const LayoutRecord& layoutRow = LayoutRecord::Find(layout);
    SampleInfo info;
    info.Init(formatRow.format, rate, layoutRow.layout);
    return info;
}

void IFormatCodecAudio::SetSampleInfo(const SampleInfo& info) {
    SetSampleFormat(info.format->format);
    SetChannelLayout(info.layout->layout);
    Tree().SetChildT<long long>(TAG_SAMPLE_RATE, info.sampleRate);
}

int IFormatCodecAudio::GetBlockAlignment() const {
    const auto alignment = Tree().FindChild(TAG_BLOCK_ALIGNMENT);
    return alignment != Tree().end() ? static_cast<int>(alignment->GetInt64()) : 0;
}

void IFormatCodecAudio::SetBlockAlignment(int alignment) {
    Tree().SetChildT<long long>(TAG_BLOCK_ALIGNMENT, alignment);
}

bool IFormatCodecAudio::ExistsLanguage() const { return FindLanguage(Tree()) != nullptr; }

std::string IFormatCodecAudio::GetLanguage() const {
    const Core::Property* language = FindLanguage(Tree());
    return language != nullptr ? language->GetString() : std::string();
}

void IFormatCodecAudio::SetLanguage(const std::string& language) {
    Tree()[TAG_METADATA].SetChildT<std::string>(TAG_LANGUAGE, language);
}

}  // namespace Quenzo::Conf
