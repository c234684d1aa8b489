#pragma once

#include <foundation/Exception.h>
#include <foundation/Export.h>

#include <string>
#include <utility>

namespace Quenzo::Conf {

/// The root of the failures that this library reports with a class of its own.
class QUENZO_API ConfException : public Exception {
    const char* GetClassName() const noexcept override;
};

/// A look-up in one of the descriptor tables failed; the description says which.
class QUENZO_API FormatException : public ConfException {
    const char* GetClassName() const noexcept override;
};

/// An operation on a transcoding graph or its document failed. Unless a class below says otherwise, the tag that it
/// names is the whole report, without a description.
class QUENZO_API ProfileException : public ConfException {
public:
    struct RequestedLinkTag;
    struct JsonBadStructureTag;
    struct RequestedNodeIdTag;

    /// The ids of the source and the target node of the link asked for.
    using TagRequestedLink = boost::error_info<RequestedLinkTag, std::pair<long long, long long>>;

    /// What is wrong with the document.
    using TagJsonBadStructure = boost::error_info<JsonBadStructureTag, std::string>;

    /// The node id asked for.
    using TagRequestedNodeId = boost::error_info<RequestedNodeIdTag, long long>;

private:
    const char* GetClassName() const noexcept override;
};

/// The link is there already, or still touches a node that cannot be removed. Carries TagRequestedLink.
class QUENZO_API LinkExists : public ProfileException {
    const char* GetClassName() const noexcept override;
};

/// There is no such link. Carries TagRequestedLink.
class QUENZO_API LinkNotFound : public ProfileException {
    const char* GetClassName() const noexcept override;
};

/// The text is no job document. Carries TagJsonBadStructure.
class QUENZO_API BadJson : public ProfileException {
    const char* GetClassName() const noexcept override;
};

/// There is no such node. Carries TagRequestedNodeId.
class QUENZO_API NodeNotFound : public ProfileException {
    const char* GetClassName() const noexcept override;
};

/// For presets; raised by their implementations.
class QUENZO_API PresetException : public ConfException {
    const char* GetClassName() const noexcept override;
};

/// For property constraints; raised by their implementations, like the two below.
class QUENZO_API ConstraintException : public ConfException {
    const char* GetClassName() const noexcept override;
};

/// The constraint says nothing about properties of that type.
class QUENZO_API ConstraintIsNotApplicableForTypeException : public ConstraintException {
    const char* GetClassName() const noexcept override;
};

/// The property checked holds another type than the constraint is about.
class QUENZO_API CheckedPropertyHasDifferentTypeException : public ConstraintException {
    const char* GetClassName() const noexcept override;
};

/// For the helpers that clients build around the library.
class QUENZO_API HelperException : public ConfException {
    const char* GetClassName() const noexcept override;
};

/// One object of each class above, so that the identity of the classes stands in the library itself and a client can
/// catch them across its boundary. They are never thrown.
extern QUENZO_API const ConfException exportDummyException;
extern QUENZO_API const FormatException exportDummyException1;
extern QUENZO_API const ProfileException exportDummyException2;
extern QUENZO_API const LinkExists exportDummyException3;
extern QUENZO_API const LinkNotFound exportDummyException4;
extern QUENZO_API const BadJson exportDummyException5;
extern QUENZO_API const NodeNotFound exportDummyException6;
extern QUENZO_API const PresetException exportDummyException7;
extern QUENZO_API const ConstraintException exportDummyException8;
extern QUENZO_API const ConstraintIsNotApplicableForTypeException exportDummyException9;
extern QUENZO_API const CheckedPropertyHasDifferentTypeException exportDummyException10;
extern QUENZO_API const HelperException exportDummyException11;

}  // namespace Quenzo::Conf
