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
/// bytes. Lies in a file of its own, which is deleted with the workload. Throws `std::runtime_error` when a file
/// cannot be read.
class Workload {
public:
    Workload(const std::vector<std::string>& paths, std::uint64_t leastBytes);
    ~Workload();
    Workload(const Workload&) = delete;
    Workload& operator=(const Workload&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

private:
    std::string path_;
    std::uint64_t bytes_ = 0;
};

} // namespace rose::bench
