#include <Conf/Interfaces/IFormat.h>

#include <foundation/Throw.h>

#include <ostream>
#include <stdexcept>
#include <utility>

namespace Quenzo::Conf {

IFormat::IFormat(const std::string& name) : property_(name) { property_.SetChild(TAG_METADATA); }

IFormat::~IFormat() = default;

const Core::Property& IFormat::GetProperty() const { return property_; }

void IFormat::SetProperty(const Core::Property& property) {
    Core::Property replacement(property);
    if (!replacement.ChildExists(TAG_METADATA)) {
        replacement.SetChild(TAG_METADATA);
    }
    property_ = std::move(replacement);
}

const Core::Property& IFormat::GetMetadata() const { return property_[TAG_METADATA]; }

void IFormat::SetMetadata(const Core::Property& metadata) { property_.SetChild(TAG_METADATA, metadata); }

bool IFormat::Compare(const SP<const IFormat>& other) const {
    if (other == nullptr) {
        QUENZO_THROW(std::invalid_argument("the description to compare with is NULL"));
    }
    return property_ == other->GetProperty();
}

void IFormat::PrintContent(std::ostream& os) const {
    os << "======External props:=====" << std::endl;
    Core::PrintCorePropertyValue(property_, 0, os, true, true);
}

}  // namespace Quenzo::Conf
