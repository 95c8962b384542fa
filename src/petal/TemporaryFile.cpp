#include "petal/TemporaryFile.h"

#include "petal/removeOnSignal.h"
#include "petal/writeFully.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace petal {

namespace {

constexpr mode_t newFileMode = 0666; // less what the user's mask takes away
constexpr mode_t permissionBits = 0777;

} // namespace

TemporaryFile::TemporaryFile(std::filesystem::path target) : target_(std::move(target)) {
    const std::string stem = ".petal-" + std::to_string(::getpid()) + "-";
    for (int attempt = 0; descriptor_ < 0; ++attempt) {
        path_ = target_.parent_path() / (stem + std::to_string(attempt));
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
        if (descriptor_ < 0 && errno != EEXIST) {
            throwErrno();
        }
    }
    removeOnSignal(path_.c_str());
}

TemporaryFile::~TemporaryFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    if (!path_.empty()) {
        ::unlink(path_.c_str());
        removeOnSignal(nullptr);
    }
}

void TemporaryFile::write(std::string_view bytes) {
    writeFully(descriptor_, bytes);
}

void TemporaryFile::keepPermissions() const {
    struct stat existing {};
    if (::stat(target_.c_str(), &existing) == 0 && ::fchmod(descriptor_, existing.st_mode & permissionBits) != 0) {
        throwErrno();
    }
}

void TemporaryFile::replaceTarget() {
    keepPermissions();
    if (::fsync(descriptor_) != 0 || ::close(std::exchange(descriptor_, -1)) != 0 ||
        ::rename(path_.c_str(), target_.c_str()) != 0) {
        throwErrno();
    }
    path_.clear();
    removeOnSignal(nullptr);
}

} // namespace petal
