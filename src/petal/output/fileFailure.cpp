#include "petal/output/fileFailure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

namespace {

constexpr const char* checkName = "Check the name of the file.";
constexpr const char* changePermissions = "Change its permissions.";
constexpr const char* freeSpace = "Free some space, or write to another place with -o.";
constexpr const char* writeElsewhere = "Write to a place where you may create files, with -o.";

struct Advice {
    int error;
    const char* reading;
    const char* writing;
};
constexpr auto advices = std::to_array<Advice>({
    {ENOENT, checkName, "Create the folder first, or write to another place with -o."},
    {ENOTDIR, checkName, writeElsewhere},
    {EISDIR, "Name the files in that folder.",
     "Name a file in that folder, or end its name with '/' for a file named after the model."},
    {EACCES, changePermissions, writeElsewhere},
    {ENOSPC, "", freeSpace},
    {EDQUOT, "", freeSpace},
    {EFBIG, "", "Raise the limit for the size of files (ulimit -f)."},
    {EPIPE, "", "The program that was to read the output has ended early."},
    {EBADF, "", "It is closed; write to a file with -o."},
});
constexpr Advice otherAdvice{0, "", writeElsewhere};

const Advice& adviceOn(const std::system_error& error) {
    const auto* found = std::ranges::find(advices, error.code().value(), &Advice::error);
    return found != advices.end() ? *found : otherAdvice;
}

} // namespace

Failure inputFailure(const std::string& path, const std::system_error& error) {
    return {Outcome::inputNotRead, "cannot read '" + path + "': " + error.code().message(), adviceOn(error).reading};
}

std::string importAdvice(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return std::error_code(errno, std::generic_category()).message() + ". " + checkName;
    }
    if (::access(file.c_str(), R_OK) != 0) {
        return std::string("It may not be read. ") + changePermissions;
    }
    if (S_ISREG(status.st_mode) && status.st_size == 0) {
        return "It is empty. Was it saved or copied completely?";
    }
    return "Check that it is a model file as its tool saves it; 'petal import --log-level DEBUG' shows how far it got.";
}

Failure outputFailure(const std::string& what, const std::system_error& error) {
    return {Outcome::outputFailed, "cannot write " + what + ": " + error.code().message(), adviceOn(error).writing};
}

std::string outputName(const std::optional<std::string>& path) {
    return path && *path != "-" ? "'" + *path + "'" : "standard output";
}

} // namespace petal
