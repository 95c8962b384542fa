#include "petal/jobs/Console.h"

#include "petal/output/Descriptor.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <unistd.h>

namespace petal {

namespace {

constexpr std::string_view clearLine = "\r\x1B[K";
constexpr auto interval = std::chrono::milliseconds(200);

void put(std::string_view text) {
    try {
        writeFully(STDERR_FILENO, text);
    } catch (const std::system_error&) {
        return; // there is no other place to report it
    }
}

bool isPlainTerminal() {
    const char* terminal = std::getenv("TERM");
    return terminal == nullptr || *terminal == '\0' || std::string_view(terminal) == "dumb";
}

std::string clockText(double seconds) {
    const auto whole = static_cast<long>(seconds);
    std::array<char, 32> text{};
    if (whole < 3600) {
        std::snprintf(text.data(), text.size(), "%ld:%02ld", whole / 60, whole % 60);
    } else {
        std::snprintf(text.data(), text.size(), "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    }
    return text.data();
}

} // namespace

bool takesColours(int descriptor) {
    const char* refused = std::getenv("NO_COLOR");
    return ::isatty(descriptor) == 1 && !isPlainTerminal() && (refused == nullptr || *refused == '\0');
}

std::string progressText(const ProgressCounts& counts, double seconds) {
    std::string text = std::to_string(counts.done) + " of " + std::to_string(counts.total) + " files";
    if (counts.done > 0 && seconds > 0) {
        const double rate = static_cast<double>(counts.done) / seconds;
        std::array<char, 32> rateText{};
        std::snprintf(rateText.data(), rateText.size(), ", %.3g/s", rate);
        text += rateText.data();
        text += ", " + clockText(static_cast<double>(counts.total - counts.done) / rate) + " left";
    }
    return counts.failed > 0 ? text + ", " + std::to_string(counts.failed) + " failed" : text;
}

Console::Console(bool showsProgress)
    : showsProgress_(showsProgress && ::isatty(STDERR_FILENO) == 1 && !isPlainTerminal()) {}

void Console::write(std::string_view lines) {
    clear();
    put(lines);
}

void Console::show(const ProgressCounts& counts) {
    const auto now = Clock::now();
    if (!showsProgress_ || (isShown_ && now < next_)) {
        return;
    }
    next_ = now + interval;
    isShown_ = true;
    put(std::string(clearLine) + progressText(counts, std::chrono::duration<double>(now - start_).count()));
}

void Console::clear() {
    if (isShown_) {
        put(clearLine);
        isShown_ = false;
    }
}

} // namespace petal
