#pragma once

#include <Conf/Interfaces/IFormat.h>
#include <Conf/Interfaces/MediaType.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <foundation/Export.h>
#include <foundation/RefCount.h>

#include <string>

namespace Quenzo::Conf {

/// A list of chapters. File descriptions do not carry chapters; the name is part of their interface.
class QUENZO_API IFormatChapterList : public IRefCountable {};

/// The description of a media file or of an output target: the container, its options and limits, and its descriptive
/// tags. It lists no streams: in a job, a file and each of its streams are nodes of their own. The root is named
/// TAG_FORMAT_FILE.
class QUENZO_API IFormatFile : public virtual IFormat, public FileVocabulary {
public:
    IFormatFile& operator=(const IFormatFile& other) = delete;

    /// The kinds of files that an open-file dialog tells apart; not the kind of a stream.
    using MediaType = FileMediaType;

    void AddRef() const override;
    long GetRefCount() const override;
    long Release() const override;

    /// A description of nothing yet: its metadata is all it has.
    static SP<IFormatFile> Create();

    /// An independent tree; references counted anew.
    SP<IFormatFile> Clone();

    /// Always null: the list given is not kept.
    SP<IFormatChapterList> GetChapters() const;
    void SetChapters(SP<IFormatChapterList> chapters);

    /// The system's own metadata, a text that only it understands. Reading it raises PropertyException when there is
    /// none.
    bool ExistsQuenzoSpecificMetadata() const;
    std::string GetQuenzoSpecificMetadata() const;
    void SetQuenzoSpecificMetadata(const std::string& text);

protected:
    IFormatFile();
    IFormatFile(const IFormatFile& other) = default;
    ~IFormatFile() override;

private:
    RefCountImpl counter_;
};

}  // namespace Quenzo::Conf
