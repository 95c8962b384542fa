#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace fuzz {

/// An empty folder of this process's own that goes with it; in memory where the system has a place for that.
class MemoryFolder {
public:
    /// Ends the process when the system does not give one.
    MemoryFolder();
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;
    ~MemoryFolder();

    [[nodiscard]] const std::filesystem::path& getPath() const { return path_; }

    /// Makes a file of these bytes, with the folders that its name asks for.
    void put(std::string_view name, std::string_view bytes) const;
    void clear() const;

private:
    std::filesystem::path path_;
};

} // namespace fuzz
