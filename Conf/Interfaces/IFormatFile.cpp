#include <Conf/Interfaces/IFormatFile.h>

namespace Quenzo::Conf {

namespace {

const char* const KEY_QUENZO_SPECIFIC_METADATA = "QUENZO_SPECIFIC_METADATA";

}  // namespace

SP<IFormatFile> IFormatFile::Create() { return SP<IFormatFile>(new IFormatFile()); }

IFormatFile::IFormatFile() : IFormat(TAG_FORMAT_FILE) {}

IFormatFile::~IFormatFile() = default;

void IFormatFile::AddRef() const { counter_.AddRefImpl(); }

long IFormatFile::GetRefCount() const { return counter_.GetRefCountImpl(); }

long IFormatFile::Release() const {
    const long remaining = counter_.ReleaseImpl();
    if (remaining == 0) {
        delete this;
    }
    return remaining;
}

SP<IFormatFile> IFormatFile::Clone() { return SP<IFormatFile>(new IFormatFile(*this)); }

SP<IFormatChapterList> IFormatFile::GetChapters() const { return nullptr; }

void IFormatFile::SetChapters(SP<IFormatChapterList> /*chapters*/) {}

bool IFormatFile::ExistsQuenzoSpecificMetadata() const { return Tree().ChildExists(KEY_QUENZO_SPECIFIC_METADATA); }

std::string IFormatFile::GetQuenzoSpecificMetadata() const { return Tree()[KEY_QUENZO_SPECIFIC_METADATA].GetString(); }

void IFormatFile::SetQuenzoSpecificMetadata(const std::string& text) {
    Tree().SetChildT<std::string>(KEY_QUENZO_SPECIFIC_METADATA, text);
}

}  // namespace Quenzo::Conf
