#include "petal/inputAdvice.h"

#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace petal {

namespace {

struct Advice {
    bool (*applies)(const struct stat& status, const std::string& file);
    const char* text;
};

constexpr std::array advices{
    Advice{[](const struct stat&, const std::string& file) { return ::access(file.c_str(), R_OK) != 0; },
           "It may not be read. Change its permissions."},
    Advice{[](const struct stat& status, const std::string&) { return S_ISREG(status.st_mode) && status.st_size == 0; },
           "It is empty. Was it saved or copied completely?"},
};

} // namespace

std::string inputAdvice(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return std::error_code(errno, std::generic_category()).message() + ". Check the name of the file.";
    }
    for (const Advice& advice : advices) {
        if (advice.applies(status, file)) {
            return advice.text;
        }
    }
    return "Check that it is a model file as its tool saves it; '--log-level DEBUG' tells how far the import came.";
}

} // namespace petal
