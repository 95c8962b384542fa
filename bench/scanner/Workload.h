#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace rose::bench {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Opens `path` for reading; throws `std::runtime_error` when it cannot.
File openFile(const std::string& path);

/// The text that is scanned: the given files one after the other, over and over until there are at least so many
/// bytes. Lies in a file that has no name, so that nothing of it outlives this process. Throws `std::runtime_error`
/// when a file cannot be read.
class Workload {
public:
    Workload(const std::vector<std::string>& paths, std::uint64_t leastBytes);

    /// Under which this process and those that it starts can open the text.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

private:
    File file_;
    std::string path_;
    std::uint64_t bytes_ = 0;
};

} // namespace rose::bench
