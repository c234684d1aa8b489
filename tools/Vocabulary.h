#pragma once

#include <tools/Identifiers.h>

#include <string>
#include <vector>

namespace Quenzo::Tools {

/// An identifier of the vocabulary and what it stands for.
struct Term {
    std::string id;
    std::string meaning;  ///< a sentence
};

/// Every codec id and every container that has a constant, in the order of the constants.
const std::vector<Term>& AllCodecs();
const std::vector<Term>& AllFormats();

/// The meaning of one of them; empty for what is not among them.
std::string MeaningOfCodec(const std::string& codecId);
std::string MeaningOfFormat(const std::string& format);

/// What a user can type for a codec, a container, an extension, a type identifier or a pixel format.
IdentifierKind CodecIdentifiers();
IdentifierKind FormatIdentifiers();
IdentifierKind ExtensionIdentifiers();
IdentifierKind UtiIdentifiers();
IdentifierKind PixelFormatIdentifiers();

}  // namespace Quenzo::Tools
