#include <Conf/Interfaces/Exceptions.h>

namespace Quenzo::Conf {

const char* ConfException::GetClassName() const noexcept { return "Quenzo::Conf::ConfException"; }

const char* FormatException::GetClassName() const noexcept { return "Quenzo::Conf::FormatException"; }

const char* ProfileException::GetClassName() const noexcept { return "Quenzo::Conf::ProfileException"; }

const char* LinkExists::GetClassName() const noexcept { return "Quenzo::Conf::LinkExists"; }

const char* LinkNotFound::GetClassName() const noexcept { return "Quenzo::Conf::LinkNotFound"; }

const char* BadJson::GetClassName() const noexcept { return "Quenzo::Conf::BadJson"; }

const char* NodeNotFound::GetClassName() const noexcept { return "Quenzo::Conf::NodeNotFound"; }

const char* PresetException::GetClassName() const noexcept { return "Quenzo::Conf::PresetException"; }

const char* ConstraintException::GetClassName() const noexcept { return "Quenzo::Conf::ConstraintException"; }

const char* ConstraintIsNotApplicableForTypeException::GetClassName() const noexcept {
    return "Quenzo::Conf::ConstraintIsNotApplicableForTypeException";
}

const char* CheckedPropertyHasDifferentTypeException::GetClassName() const noexcept {
    return "Quenzo::Conf::CheckedPropertyHasDifferentTypeException";
}

const char* HelperException::GetClassName() const noexcept { return "Quenzo::Conf::HelperException"; }

}  // namespace Quenzo::Conf
