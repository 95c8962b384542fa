#pragma once

#include <string>
#include <string_view>

namespace fuzz {

/// A file in memory that has a path, so that a read of it never fails and nothing is left on a disk.
class MemoryFile {
public:
    /// Ends the process when the system does not give one.
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    /// Stays the same for as long as this object lives.
    [[nodiscard]] const std::string& getPath() const { return path_; }
    /// The open descriptor, which stays this object's.
    [[nodiscard]] int getDescriptor() const { return descriptor_; }

    /// Makes `bytes` all that the file holds, and its beginning where the descriptor stands.
    void put(std::string_view bytes);
    /// All that the file holds.
    [[nodiscard]] std::string contents() const;

private:
    int descriptor_;
    std::string path_;
};

} // namespace fuzz
