#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace petal {

/// Whether standard error takes colours: it is a terminal that knows more than text, and NO_COLOR is not set.
[[nodiscard]] bool takesColours();

/// How far a run through many files has come.
struct ProgressCounts {
    std::size_t done;
    std::size_t total;
    std::size_t failed;
};

/// A line that tells how far a run has come `seconds` after its start.
[[nodiscard]] std::string progressText(const ProgressCounts& counts, double seconds);

/// Standard error during a run through many files: whole lines, and on a terminal a line of progress that is always
/// the last. What cannot be written there is lost.
class Console {
public:
    /// Without `showsProgress` there is no such line, nor is there unless standard error is a terminal.
    explicit Console(bool showsProgress);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    /// Takes the line of progress away.
    ~Console() { clear(); }

    /// Writes lines, which end with a line's end.
    void write(std::string_view lines);
    /// Shows the progress, unless that was done a moment ago.
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
