#pragma once

#include <filesystem>
#include <string>
#include <unordered_map>

namespace petal {

/// What a path stands for when it is a symbolic link, which may lead to a file that does not exist yet; else the path
/// itself. Throws `std::system_error`.
[[nodiscard]] std::filesystem::path followLinks(std::filesystem::path file);

/// The files that a command reads and those it writes. What is written must be a file of its own: else what was read,
/// or written before, would be lost. Paths need not exist; links count as what they lead to. Standard streams, devices
/// and pipes may be shared.
class FileUses {
public:
    /// To be told ahead of what is written.
    void reads(const std::string& path);
    /// Throws a `Failure` with the outcome `wrongUsage` when the file is read, or written to under another option.
    /// "", "-" and paths such as "/dev/stdout" are no files.
    void writes(const std::string& path);
    /// Throws the same when the file, of which it is known only now that it is read, is among those that are written.
    void refuseToLose(const std::string& path) const;

    using PathsByKey = std::unordered_map<std::string, std::string>;

    /// The paths that are written.
    [[nodiscard]] const PathsByKey& getWritten() const { return names_; }

private:
    [[nodiscard]] std::string nameOf(const std::string& path);

    // By what the file is where it exists, else by its name: other names of the same file are that file.
    PathsByKey read_;
    PathsByKey written_;
    // By name: a file is replaced under the one name and stays what it is under its others.
    PathsByKey names_;
    std::unordered_map<std::string, std::filesystem::path> folders_; // without links, by path
};

} // namespace petal
