#include "petal/outputFailure.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace petal {

namespace {

struct Advice {
    int error;
    const char* text;
};

constexpr std::array advices{
    Advice{ENOSPC, "Free some space, or write to another place with -o."},
    Advice{EDQUOT, "Free some space, or write to another place with -o."},
    Advice{EFBIG, "Raise the limit for the size of files (ulimit -f)."},
    Advice{ENOENT, "Create the folder first, or write to another place with -o."},
    Advice{EISDIR, "Name a file in that folder, or end its name with '/' for a file named after the model."},
    Advice{EPIPE, "The program that was to read the output has ended early."},
    Advice{EBADF, "It is closed; write to a file with -o."},
};
constexpr const char* generalAdvice = "Write to a place where you may create files, with -o.";

} // namespace

Failure outputFailure(const std::string& what, const std::system_error& error) {
    const auto* advice = std::ranges::find(advices, error.code().value(), &Advice::error);
    return {Outcome::outputFailed, "cannot write " + what + ": " + error.code().message(),
            advice != advices.end() ? advice->text : generalAdvice};
}

std::string outputName(const std::optional<std::string>& path) {
    return path && *path != "-" ? "'" + *path + "'" : "standard output";
}

} // namespace petal
