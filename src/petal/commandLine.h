#pragma once

#include "petal/Request.h"

#include <string>
#include <vector>

namespace petal {

/// Reads the arguments behind the program's name. Throws a `Failure` with the outcome `wrongUsage`.
[[nodiscard]] Request parseCommandLine(int argc, const char* const* argv);

/// An option or a positional argument, as help tells of it.
struct OptionText {
    std::vector<std::string> names; // "-o", "--log"; none for a positional argument
    std::string value;              // "FILE", "SECONDS", or "json|tree"; empty for a flag, and for files without a name
    bool isRepeated = false;        // may be given several times
    std::string description;
};
struct CommandText {
    std::string name; // "import", "report merge"; empty for petal without a command
    std::string description;
    std::vector<OptionText> options;
};

/// The whole command line: petal itself, then each command.
[[nodiscard]] std::vector<CommandText> commandTexts();

} // namespace petal
