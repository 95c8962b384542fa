#include "petal/output/FileSystems.h"

#include "petal/output/TemporaryFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace petal {

namespace {

/// File systems on which syncfs does for each file what fsync would do. A file system of a user's process, for one, is
/// not told of it.
constexpr auto wholeKinds = std::to_array<long>(
    {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, TMPFS_MAGIC, OVERLAYFS_SUPER_MAGIC});

bool isWholeKind(int descriptor) {
    struct statfs status {};
    return ::fstatfs(descriptor, &status) == 0 &&
           std::ranges::find(wholeKinds, static_cast<long>(status.f_type)) != wholeKinds.end();
}

template <class Step>
std::error_code attempt(Step step) {
    try {
        step();
        return {};
    } catch (const std::system_error& error) {
        return error.code();
    }
}

} // namespace

void FileSystems::watch(const std::filesystem::path& folder, const std::filesystem::path& sibling) {
    if (folders_.contains(folder.native())) {
        return;
    }
    if (const dev_t* device = deviceOf(sibling.native())) {
        folders_.emplace(folder.native(), dev_t{*device});
        return;
    }
    const char* name = folder.empty() ? "." : folder.c_str();
    struct stat status {};
    if (::stat(name, &status) == 0 && devices_.contains(status.st_dev)) {
        folders_[folder.native()] = status.st_dev;
        return;
    }
    Descriptor opened(::open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen() && ::fstat(opened.get(), &status) == 0) {
        folders_[folder.native()] = status.st_dev;
        devices_.try_emplace(status.st_dev, isWholeKind(opened.get()) ? std::move(opened) : Descriptor());
    }
}

bool FileSystems::syncWhole(dev_t device) {
    const auto found = devices_.find(device);
    return found != devices_.end() && found->second.isOpen() && ::syncfs(found->second.get()) == 0;
}

const dev_t* FileSystems::deviceOf(const std::string& folder) const {
    const auto found = folders_.find(folder);
    return found != folders_.end() ? &found->second : nullptr;
}

std::vector<std::error_code> FileSystems::sync(std::span<const TemporaryFile* const> files) {
    std::vector<std::error_code> errors(files.size());
    std::map<dev_t, std::vector<std::size_t>> byDevice; // the numbers of files
    std::vector<std::size_t> single;
    for (std::size_t file = 0; file < files.size(); ++file) {
        errors[file] = attempt([&] { files[file]->takePermissions(); });
        const dev_t* device = deviceOf(files[file]->getFolder());
        (device != nullptr ? byDevice[*device] : single).push_back(file);
    }
    for (const auto& [device, numbers] : byDevice) {
        // A failure of the whole may be that of another program's file: ask each of ours.
        if (numbers.size() == 1 || !syncWhole(device)) {
            single.insert(single.end(), numbers.begin(), numbers.end());
        }
    }
    for (const std::size_t file : single) {
        if (!errors[file]) {
            errors[file] = attempt([&] { files[file]->sync(); });
        }
    }
    return errors;
}

void FileSystems::syncFolders(const std::set<std::string>& folders) {
    std::map<dev_t, std::vector<const std::string*>> byDevice;
    std::vector<const std::string*> single;
    for (const std::string& folder : folders) {
        const dev_t* device = deviceOf(folder);
        (device != nullptr ? byDevice[*device] : single).push_back(&folder);
    }
    for (const auto& [device, some] : byDevice) {
        if (some.size() == 1 || !syncWhole(device)) {
            single.insert(single.end(), some.begin(), some.end());
        }
    }
    std::ranges::for_each(single, [](const std::string* folder) { syncFolder(*folder); });
}

} // namespace petal
