#include <Conf/Interfaces/IFormatCodec.h>

#include <utility>

namespace Quenzo::Conf {

SP<IFormatCodec> IFormatCodec::CreateUndefined() { return SP<IFormatCodec>(new IFormatCodec(std::string())); }

IFormatCodec::IFormatCodec(const std::string& name) : IFormat(name) {
    Tree().SetChild(TAG_CODEC_OPTIONS_ENCODE);
    Tree().SetChildT<long long>(TAG_STREAM_ID, DEFAULT_STREAM_ID);
    Tree().SetChild(TAG_STREAM_METADATA);
}

IFormatCodec::~IFormatCodec() = default;

void IFormatCodec::AddRef() const { counter_.AddRefImpl(); }

long IFormatCodec::GetRefCount() const { return counter_.GetRefCountImpl(); }

long IFormatCodec::Release() const {
    const long remaining = counter_.ReleaseImpl();
    if (remaining == 0) {
        delete this;
    }
    return remaining;
}

void IFormatCodec::SetProperty(const Core::Property& property) {
    Core::Property replacement(property);
    for (const std::string* const key : {&TAG_METADATA, &TAG_STREAM_METADATA}) {
        if (!replacement.ChildExists(*key)) {
            replacement.SetChild(*key);
        }
    }
    Tree() = std::move(replacement);
}

MediaType IFormatCodec::GetCodecType() const { return MediaType::None; }

void IFormatCodec::SetOptionsEncode(const Core::Property& options) { Tree()[TAG_CODEC_OPTIONS_ENCODE] = options; }

const Core::Property& IFormatCodec::GetOptionsEncode() const { return Tree()[TAG_CODEC_OPTIONS_ENCODE]; }

const Core::Property& IFormatCodec::GetStreamMetadata() const { return Tree()[TAG_STREAM_METADATA]; }

void IFormatCodec::SetStreamMetadata(const Core::Property& metadata) { Tree()[TAG_STREAM_METADATA] = metadata; }

void IFormatCodec::SetPrivateData(const SP<const IBlob>& blob) { privateData_ = blob; }

SP<const IBlob> IFormatCodec::GetPrivateData() const { return privateData_; }

SP<IFormatCodec> IFormatCodec::CloneBase() const { return SP<IFormatCodec>(new IFormatCodec(*this)); }

void IFormatCodec::SetAssetTrack(const std::shared_ptr<Proc::AVAssetTrackWrapper>& track) { assetTrack_ = track; }

std::shared_ptr<Proc::AVAssetTrackWrapper> IFormatCodec::GetAssetTrack() const { return assetTrack_; }

bool IFormatCodec::IsUndefined() const { return Tree().GetName().empty(); }

}  // namespace Quenzo::Conf
