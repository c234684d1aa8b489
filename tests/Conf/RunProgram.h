#pragma once

// Runs a program and collects what it says.

#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {

struct ProgramResult {
    int exitStatus;  ///< -1 when a signal ended the program
    std::string output;
    std::string errors;
};

/// Runs the program with the arguments and the text as its standard input, and waits for its end. Raises
/// std::system_error when it cannot be run.
ProgramResult RunProgram(const std::vector<std::string>& command, const std::string& input);

}  // namespace Quenzo::Conf::Testing
