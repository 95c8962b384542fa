#pragma once

#include <filesystem>
#include <string>
#include <unordered_map>

namespace petal {

/// The target of a symbolic link, through all links, which may not exist yet; of another path the path itself. Throws
/// `std::system_error`.
[[nodiscard]] std::filesystem::path followLinks(std::filesystem::path file);

/// The files that a command reads and writes. Every output must be a distinct file; otherwise it would overwrite an
/// input or another output. Paths need not exist; a link counts as its target. Standard streams, devices and pipes may
/// be shared. Each folder is resolved once.
class FileUses {
public:
    /// Notes an input. To be called before any `writes`.
    void reads(const std::string& path);
    /// Notes an output. Throws a `Failure` with the outcome `wrongUsage` when the file is an input or another output.
    /// Ignores "", "-" and paths such as "/dev/stdout".
    void writes(const std::string& path);
    /// Throws the same when an input that is only known now is one of the outputs.
    void refuseToLose(const std::string& path) const;

    using PathsByKey = std::unordered_map<std::string, std::string>;

    /// The outputs that are regular files or do not exist yet.
    [[nodiscard]] const PathsByKey& getWritten() const { return names_; }

private:
    [[nodiscard]] std::string nameOf(const std::string& path);

    // Keyed by device and inode where the file exists, else by its name, so that all names of a file count as one.
    PathsByKey read_;
    PathsByKey written_;
    // Keyed by name: replacing a file under one name leaves its other names as they are.
    PathsByKey names_;
    std::unordered_map<std::string, std::filesystem::path> folders_; // without links, by path
};

} // namespace petal
