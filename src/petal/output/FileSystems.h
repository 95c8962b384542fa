#pragma once

#include "petal/output/Descriptor.h"

#include <filesystem>
#include <map>
#include <set>
#include <span>
#include <string>
#include <sys/types.h>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace petal {

class TemporaryFile;

/// Brings many files to the disk at about the cost of one, by synchronising their whole file system, which includes
/// files of other programs. Holds a descriptor for each file system. Used by one thread.
class FileSystems {
public:
    /// To be called before a file in the folder is written: later failures to bring it to the disk are noticed.
    void watch(const std::filesystem::path& folder) { watch(folder, folder); }
    /// The same where `sibling` is a folder of the same file system: it need not be looked up if it is watched.
    void watch(const std::filesystem::path& folder, const std::filesystem::path& sibling);
    /// Gives the files the permissions of their targets and brings their contents to the disk. Returns the failure of
    /// each file, in the same order; no error means that the contents will survive a power cut. Files of a kind of file
    /// system that is not known to be synchronised as a whole are brought there one by one.
    [[nodiscard]] std::vector<std::error_code> sync(std::span<const TemporaryFile* const> files);
    /// Brings the names in the folders to the disk, likewise. Throws `std::system_error`.
    void syncFolders(const std::set<std::string>& folders);

private:
    [[nodiscard]] const dev_t* deviceOf(const std::string& folder) const; // null: not watched
    [[nodiscard]] bool syncWhole(dev_t device);

    std::unordered_map<std::string, dev_t> folders_;
    std::map<dev_t, Descriptor> devices_; // not open where only single files can be synchronised
};

} // namespace petal
