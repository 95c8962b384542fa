#include "petal/output/ModelOutput.h"

#include "petal/output/Descriptor.h"
#include "petal/output/FileUses.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

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

DescriptorOutput::~DescriptorOutput() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void DescriptorOutput::write(std::string_view bytes) {
    writeFully(descriptor_, bytes);
}

void DescriptorOutput::commit() {
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        throwErrno();
    }
}

bool DescriptorOutput::isTerminal() const {
    return ::isatty(descriptor_) == 1;
}

} // namespace petal
