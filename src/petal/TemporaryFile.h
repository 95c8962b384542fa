#pragma once

#include <filesystem>
#include <string_view>

namespace petal {

/// A file that is to take the place of another once it is complete.
///
/// It stands in the same folder under a name of its own and is removed by the destructor, and by the signals that
/// ask a program to end, unless it has taken its place by then. At most one exists at a time.
class TemporaryFile {
public:
    /// Creates an empty file that may become `target`. Throws `std::system_error`.
    explicit TemporaryFile(std::filesystem::path target);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    /// Throws `std::system_error`.
    void write(std::string_view bytes);
    /// Puts the file in the target's place once its contents have reached the disk. Throws `std::system_error`; the
    /// target is then as it was.
    void replaceTarget();

private:
    void keepPermissions() const;

    std::filesystem::path target_;
    std::filesystem::path path_; // empty once there is nothing to remove
    int descriptor_ = -1;        // -1 once closed
};

} // namespace petal
