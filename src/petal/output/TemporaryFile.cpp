#include "petal/output/TemporaryFile.h"

#include "petal/output/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

namespace {

std::atomic<RemovedOnSignal*> first = nullptr;
static_assert(std::atomic<RemovedOnSignal*>::is_always_lock_free, "read by a signal handler");

constexpr std::array endingSignals{SIGINT, SIGQUIT, SIGHUP, SIGTERM};

} // namespace

void RemovedOnSignal::removeAndEnd(int signal) {
    for (const RemovedOnSignal* file = first; file != nullptr; file = file->next_) {
        ::unlink(file->path_);
    }
    ::raise(signal); // has its default effect now: SA_RESETHAND
}

void RemovedOnSignal::handleEndingSignals() {
    struct sigaction handling {};
    handling.sa_handler = removeAndEnd;
    handling.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : endingSignals) {
        struct sigaction present {};
        if (::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_DFL) { // leaves ignored ones alone
            ::sigaction(signal, &handling, nullptr);
        }
    }
}

void RemovedOnSignal::remember(const char* path) {
    path_ = path;
    link_ = &first;
    next_ = first.load();
    if (next_ != nullptr) {
        next_.load()->link_ = &next_;
    }
    first = this;
    if (next_ == nullptr) {
        handleEndingSignals();
    }
}

void RemovedOnSignal::forget() noexcept {
    if (link_ == nullptr) {
        return;
    }
    RemovedOnSignal* next = next_;
    *link_ = next;
    if (next != nullptr) {
        next->link_ = link_;
    }
    link_ = nullptr;
}

void RemovedOnSignal::forgetAll() noexcept {
    while (first != nullptr) {
        first.load()->forget();
    }
}

namespace {

constexpr mode_t newFileMode = 0666; // before the user's mask
constexpr mode_t permissionBits = 0777;

/// Identifies the set of processes among which a process id is unique: a boot of a machine and a namespace of process
/// ids in it. Empty if the system does not say.
std::string scopeOfIds() {
    std::string boot;
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    struct stat processes {};
    if (!std::getline(file, boot) || ::stat("/proc/self/ns/pid", &processes) != 0) {
        return "";
    }
    return boot + "-" + std::to_string(processes.st_ino) + "-";
}

constexpr std::string_view mark = ".petal-";

/// The start of the names, which a process id follows.
const std::string& namePrefix() {
    static const std::string prefix = std::string(mark) + scopeOfIds();
    return prefix;
}

/// Whether `name` belongs to a temporary file whose process has certainly ended. An id that is in use again counts as
/// the same process.
bool isAbandoned(std::string_view name) {
    if (namePrefix() == mark || !name.starts_with(namePrefix())) {
        return false;
    }
    name.remove_prefix(namePrefix().size());
    pid_t process = 0;
    const auto [rest, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isOurs = error == std::errc() && process > 0 && rest != name.data() + name.size() && *rest == '-';
    return isOurs && ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

std::string temporaryNameIn(const std::string& folder) {
    static unsigned made = 0;
    return fileIn(folder, namePrefix() + std::to_string(::getpid()) + "-" + std::to_string(made++));
}

std::string_view folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, std::max(slash, std::size_t{1}));
}

std::string fileIn(std::string_view folder, std::string_view name) {
    std::string path(folder);
    return path.append(folder.empty() || folder.ends_with('/') ? "" : "/").append(name);
}

TemporaryFile::TemporaryFile(std::string target, Signal signal, Target kind)
    : target_(std::move(target)), folder_(folderOf(target_)), kind_(kind) {
    while (!descriptor_.isOpen()) {
        path_ = temporaryNameIn(folder_);
        descriptor_ = Descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode));
        if (!descriptor_.isOpen() && errno != EEXIST) {
            throwErrno();
        }
    }
    if (signal == Signal::removes) {
        removal_.remember(path_.c_str());
    }
}

TemporaryFile::~TemporaryFile() {
    if (!path_.empty()) {
        ::unlink(path_.c_str());
        forget();
    }
}

void TemporaryFile::forget() {
    removal_.forget();
    path_.clear();
}

void TemporaryFile::write(std::string_view bytes) {
    writeFully(descriptor_.get(), bytes);
}

void TemporaryFile::empty() {
    if (::ftruncate(descriptor_.get(), 0) != 0 || ::lseek(descriptor_.get(), 0, SEEK_SET) != 0) {
        throwErrno();
    }
}

void TemporaryFile::takePermissions() const {
    struct stat existing {};
    if (!isTargetNew() && ::stat(target_.c_str(), &existing) == 0 &&
        ::fchmod(descriptor_.get(), existing.st_mode & permissionBits) != 0) {
        throwErrno();
    }
}

void TemporaryFile::sync() const {
    takePermissions();
    const Descriptor again(descriptor_.isOpen() ? -1 : ::open(path_.c_str(), O_WRONLY | O_CLOEXEC));
    if (::fsync((descriptor_.isOpen() ? descriptor_ : again).get()) != 0) {
        throwErrno();
    }
}

void TemporaryFile::takePlace() {
    if (::rename(path_.c_str(), target_.c_str()) != 0) {
        throwErrno();
    }
    forget();
}

void removeAbandoned(const std::filesystem::path& folder, std::size_t mostNames) {
    static std::set<std::filesystem::path> searched;
    if (searched.contains(folder)) {
        return;
    }
    std::error_code failure;
    std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, failure);
    for (std::size_t names = 0; !failure && entry != end(entry); ++names) {
        if (names == mostNames) {
            return;
        }
        if (isAbandoned(entry->path().filename().native())) {
            ::unlink(entry->path().c_str());
        }
        entry.increment(failure);
    }
    searched.insert(folder);
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
