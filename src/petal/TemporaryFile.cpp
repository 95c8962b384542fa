#include "petal/TemporaryFile.h"

#include "petal/Descriptor.h"
#include "petal/removeOnSignal.h"
#include "petal/writeFully.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

namespace {

constexpr mode_t newFileMode = 0666; // less what the user's mask takes away
constexpr mode_t permissionBits = 0777;

/// A name that this process has not used yet; one of another process, long gone, may still be there.
std::string nextName() {
    static unsigned made = 0;
    return ".petal-" + std::to_string(::getpid()) + "-" + std::to_string(made++);
}

} // namespace

TemporaryFile::TemporaryFile(std::filesystem::path target, Signal signal)
    : target_(std::move(target)), signal_(signal) {
    while (descriptor_ < 0) {
        path_ = target_.parent_path() / nextName();
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
        if (descriptor_ < 0 && errno != EEXIST) {
            throwErrno();
        }
    }
    if (signal_ == Signal::removes) {
        removeOnSignal(path_.c_str());
    }
}

TemporaryFile::~TemporaryFile() {
    ::close(descriptor_);
    if (!path_.empty()) {
        ::unlink(path_.c_str());
        forget();
    }
}

void TemporaryFile::forget() {
    if (signal_ == Signal::removes) {
        keepOnSignal(path_.c_str());
    }
    path_.clear();
}

void TemporaryFile::write(std::string_view bytes) {
    writeFully(descriptor_, bytes);
}

void TemporaryFile::sync() const {
    struct stat existing {};
    if ((::stat(target_.c_str(), &existing) == 0 && ::fchmod(descriptor_, existing.st_mode & permissionBits) != 0) ||
        ::fsync(descriptor_) != 0) {
        throwErrno();
    }
}

void TemporaryFile::takePlace() {
    if (::rename(path_.c_str(), target_.c_str()) != 0) {
        throwErrno();
    }
    forget();
}

void syncFolder(const std::filesystem::path& folder) {
    const char* name = folder.empty() ? "." : folder.c_str();
    const Descriptor opened(::open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.get() < 0 && errno == EACCES) {
        return; // a folder that may be written to but not read cannot be synchronised
    }
    if (opened.get() < 0 || (::fsync(opened.get()) != 0 && errno != EINVAL)) {
        throwErrno();
    }
}

} // namespace petal
