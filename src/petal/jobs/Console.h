#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <unistd.h>

namespace petal {

/// Whether to use colours on a stream: it is a terminal that supports them, and NO_COLOR is not set.
[[nodiscard]] bool takesColours(int descriptor = STDERR_FILENO);

/// The progress of a run through many files.
struct ProgressCounts {
    std::size_t done;
    std::size_t total;
    std::size_t failed;
};

/// A line with the progress of a run, `seconds` after its start.
[[nodiscard]] std::string progressText(const ProgressCounts& counts, double seconds);

/// Standard error during a run through many files: whole lines and, on a terminal, a last line with the progress. Used
/// by one thread. Failures to write are ignored.
class Console {
public:
    /// The progress is shown if `showsProgress` is true and standard error is a terminal.
    explicit Console(bool showsProgress);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    /// Removes the line with the progress.
    ~Console() { clear(); }

    /// Writes lines, each with its line end.
    void write(std::string_view lines);
    /// Shows the progress, unless the line is less than 200 ms old.
    void show(const ProgressCounts& counts);
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    bool showsProgress_;
    bool isShown_ = false;
    Clock::time_point start_ = Clock::now();
    Clock::time_point next_ = start_;
};

} // namespace petal
