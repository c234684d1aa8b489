#pragma once

#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <foundation/Export.h>
#include <foundation/Property.h>
#include <foundation/RefCount.h>

#include <iosfwd>
#include <string>

namespace Quenzo::Conf {

/// The base of every description: a tree of properties that always has a "metadata" child. The root is named after the
/// kind of the description.
///
/// When memory runs out, std::bad_alloc is raised, and the description is as it was; but a setter that stores several
/// keys may have stored the first of them, each as a whole, and completes when it is called again.
class QUENZO_API IFormat : public IRefCountable, public FormatVocabulary {
public:
    IFormat& operator=(const IFormat& other) = delete;

    void AddRef() const override = 0;
    long GetRefCount() const override = 0;
    long Release() const override = 0;

    /// The whole tree.
    virtual const Core::Property& GetProperty() const;

    /// Replaces the tree, the root's name included, and adds an empty "metadata" child when it has none. Raises
    /// MethodIsNotApplicable, and leaves the description as it was, when the tree given is not a node.
    virtual void SetProperty(const Core::Property& property);

    /// The "metadata" child. Raises PropertyException when someone has removed it.
    const Core::Property& GetMetadata() const;

    /// Stores a copy as the "metadata" child, whatever the tree's own name is.
    void SetMetadata(const Core::Property& metadata);

    /// True when both trees are equal. What a description carries beside its tree takes no part. Raises
    /// std::invalid_argument when there is nothing to compare with.
    bool Compare(const SP<const IFormat>& other) const;

    /// Writes a heading line and the dump of the tree.
    void PrintContent(std::ostream& os) const;

protected:
    /// A tree of that name with an empty "metadata" child.
    explicit IFormat(const std::string& name);
    IFormat(const IFormat& other) = default;
    ~IFormat() override;

    /// The tree itself, whatever a derived class makes of GetProperty.
    Core::Property& Tree() noexcept { return property_; }
    const Core::Property& Tree() const noexcept { return property_; }

private:
    Core::Property property_;
};

}  // namespace Quenzo::Conf
