#pragma once

#include <stdexcept>
#include <string>

namespace Quenzo::Tools {

/// How the program ends. Scripts rely on the numbers.
enum class ExitStatus {
    Done = 0,
    No = 1,          ///< the command was carried out, and the answer is no
    WrongUsage = 2,  ///< the command line makes no sense
    Unreadable = 3,  ///< an input could not be read, or is not what it should be
    Unwritable = 4,  ///< an output could not be written or drawn
};

/// Ends the command: the text goes to standard error as one line.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& text);

    ExitStatus GetStatus() const noexcept { return status_; }

private:
    ExitStatus status_;
};

/// A name as it can stand in a one-line message: in double quotes, control characters as C escapes.
std::string Quoted(const std::string& name);

/// The system's words for the current errno.
std::string SystemReason();

}  // namespace Quenzo::Tools
