#pragma once

#include <foundation/Export.h>
#include <foundation/PropertyTypes.h>

// Tags are read in other modules than they were set in, so their types have to be known there, even where a program
// hides what it does not mark.
#pragma GCC visibility push(default)
#include <boost/exception/exception.hpp>
#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#pragma GCC visibility pop

#include <exception>
#include <string>

namespace Quenzo {

/// The root of every failure that the libraries report with a class of their own. What went wrong travels as error
/// information: read a tag with boost::get_error_info<Exception::TagDescription>(failure), which returns null when the
/// tag is absent. The throwing file, line and function are there too (boost::throw_file, throw_line, throw_function).
///
/// When memory runs out while a failure is put together, std::bad_alloc arrives in its place. Several threads may look
/// at one exception (std::exception_ptr) at the same time; copies of one share their information without a lock, and
/// belong to one thread at a time together.
class QUENZO_API Exception : public virtual std::exception, public virtual boost::exception {
public:
    struct DescriptionTag;
    struct CallStackTag;

    /// The message.
    using TagDescription = boost::error_info<DescriptionTag, std::string>;

    /// Where the failure was raised, as GetCallStack returned it there.
    using TagCallStack = boost::error_info<CallStackTag, std::string>;

    /// The description when there is one, else the name of the class. Valid as long as the exception lives.
    const char* what() const noexcept override;

private:
    virtual const char* GetClassName() const noexcept;
};

/// The calling functions, innermost first and at most 24, one to a line: number, function name, module. Names come from
/// the dynamic symbol tables, so a function that no module exports shows as its offset in the module; no debug
/// information is read. Empty when there is no memory for the list of frames.
QUENZO_API std::string GetCallStack();

namespace Core {

/// The root of the failures of the property tree and the byte streams.
class QUENZO_API CoreException : public virtual Exception {
    const char* GetClassName() const noexcept override;
};

/// A property was asked for something that it does not have.
class QUENZO_API PropertyException : public virtual CoreException {
public:
    struct PropertyNameTag;
    struct PropertyTypeTag;
    struct MethodNameTag;

    /// The name of the property asked, or of the child that is missing.
    using TagPropertyName = boost::error_info<PropertyNameTag, std::string>;

    /// The type of the property asked.
    using TagPropertyType = boost::error_info<PropertyTypeTag, PropertyTypes>;

    /// The method called, such as "GetInt64".
    using TagMethodName = boost::error_info<MethodNameTag, std::string>;

private:
    const char* GetClassName() const noexcept override;
};

/// A method that needs children was called on a property that is not a node.
class QUENZO_API MethodIsNotApplicable : public PropertyException {
    const char* GetClassName() const noexcept override;
};

/// A byte stream could not be opened, read or written; the description names the file and the system's reason.
class QUENZO_API StreamException : public virtual CoreException {
    const char* GetClassName() const noexcept override;
};

}  // namespace Core
}  // namespace Quenzo
