#include "petal/ModelOutput.h"

#include "petal/DescriptorOutput.h"
#include "petal/ReplacingOutput.h"
#include "petal/followLinks.h"
#include "petal/namedDescriptor.h"
#include "petal/writeFully.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

using std::filesystem::path;

std::optional<path> fileToReplace(const std::string& given) {
    struct stat existing {};
    const bool exists = ::stat(given.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode)) {
        return std::nullopt;
    }
    if (exists && ::access(given.c_str(), W_OK) != 0) {
        throwErrno();
    }
    return followLinks(given);
}

bool leadsToTerminal(const std::optional<std::string>& given) {
    if (given && *given != "-" && namedDescriptor(*given) < 0) {
        struct stat existing {};
        if (::stat(given->c_str(), &existing) != 0 || !S_ISCHR(existing.st_mode)) {
            return false;
        }
    }
    try {
        return ModelOutput::open(given)->isTerminal();
    } catch (const std::system_error&) {
        return false;
    }
}

std::unique_ptr<ModelOutput> ModelOutput::open(const std::optional<std::string>& given, int descriptor) {
    if (descriptor < 0) {
        descriptor = !given || *given == "-" ? STDOUT_FILENO : namedDescriptor(*given);
    }
    if (descriptor >= 0) {
        return std::make_unique<DescriptorOutput>(duplicate(descriptor));
    }
    if (auto file = fileToReplace(*given)) {
        removeAbandoned(file->parent_path(), fewNames);
        return std::make_unique<ReplacingOutput>(std::move(*file));
    }
    const int opened = ::open(given->c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (opened < 0) {
        throwErrno();
    }
    return std::make_unique<DescriptorOutput>(opened);
}

} // namespace petal
