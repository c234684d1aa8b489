#pragma once

#include <Conf/Interfaces/IFormat.h>
#include <Conf/Interfaces/MediaType.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <foundation/Blob.h>
#include <foundation/Export.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <memory>
#include <string>

namespace Quenzo::Proc {

/// A media track of the platform's media framework. Descriptions carry the handle and never look into it.
class AVAssetTrackWrapper;

}  // namespace Quenzo::Proc

namespace Quenzo::Conf {

/// The base of the stream descriptions. Beside the "metadata" of every description its tree starts with the encoder
/// options, the stream id and the stream metadata; two attachments travel with it outside the tree: the codec's private
/// data and the platform's track handle. A plain object of this class describes a stream that is not known yet.
class QUENZO_API IFormatCodec : public IFormat, public CodecVocabulary {
public:
    IFormatCodec& operator=(const IFormatCodec& other) = delete;

    /// A description whose root has no name yet.
    static SP<IFormatCodec> CreateUndefined();

    void AddRef() const override;
    long GetRefCount() const override;
    long Release() const override;

    /// As IFormat::SetProperty; adds an empty "stream_metadata" child too when there is none. The encoder options and
    /// the stream id are not restored.
    void SetProperty(const Core::Property& property) override;

    /// The kind of the stream: None here; each stream class returns its own.
    virtual MediaType GetCodecType() const;

    /// Assigns a tree to the "codec.options.encode" child, which takes the tree's name too: pass a tree obtained from
    /// GetOptionsEncode, or one of that name. Raises PropertyException when the child is not there.
    virtual void SetOptionsEncode(const Core::Property& options);

    /// The "codec.options.encode" child. Raises PropertyException when it is not there.
    virtual const Core::Property& GetOptionsEncode() const;

    /// The "stream_metadata" child, read and assigned like the encoder options.
    virtual const Core::Property& GetStreamMetadata() const;
    virtual void SetStreamMetadata(const Core::Property& metadata);

    /// The codec's private data; null when there is none. Clones share the blob.
    virtual void SetPrivateData(const SP<const IBlob>& blob);
    virtual SP<const IBlob> GetPrivateData() const;

    /// A copy of the object's own class: an independent tree, the same attachments, references counted anew.
    virtual SP<IFormatCodec> CloneBase() const;

    /// The platform's track handle; empty when there is none. Clones share it.
    void SetAssetTrack(const std::shared_ptr<Proc::AVAssetTrackWrapper>& track);
    std::shared_ptr<Proc::AVAssetTrackWrapper> GetAssetTrack() const;

    /// True when the root of the tree has no name.
    bool IsUndefined() const;

protected:
    /// A tree of that name with the children that every stream description starts with.
    explicit IFormatCodec(const std::string& name);
    IFormatCodec(const IFormatCodec& other) = default;
    ~IFormatCodec() override;

private:
    RefCountImpl counter_;
    SP<const IBlob> privateData_;
    std::shared_ptr<Proc::AVAssetTrackWrapper> assetTrack_;
};

}  // namespace Quenzo::Conf
