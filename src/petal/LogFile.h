#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace petal {

/// A log that goes to a file. Each line is there at once, whatever becomes of the process.
class LogFile {
public:
    /// Empties the file, unless it is open already under a path such as "/dev/fd/3". Throws a `Failure` with the
    /// outcome `outputFailed` when it cannot be opened.
    explicit LogFile(std::string path);

    /// Writes a line, its end included. A failure is kept for `close`.
    void write(std::string_view line);
    /// Throws a `Failure` with the outcome `outputFailed` when a line could not be written.
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::unique_ptr<std::FILE, Closer> file_;
    int error_ = 0; // the first failure, as in errno
};

} // namespace petal
