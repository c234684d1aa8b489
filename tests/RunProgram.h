#pragma once

// Runs a program and collects what it says.

#include <string>
#include <vector>

namespace Quenzo::Testing {

struct ProgramResult {
    int status;  ///< -1 when a signal ended the program
    std::string output;
    std::string messages;
};

/// Runs the program with the arguments and the text as its standard input, and waits for its end. `environment` holds
/// variables as NAME=value, which are set beside or instead of this process's own. Raises std::system_error when it
/// cannot be run.
ProgramResult RunProgram(const std::vector<std::string>& command, const std::string& input = {},
                         const std::vector<std::string>& environment = {});

}  // namespace Quenzo::Testing
