#include "petal/jobs/Lines.h"

namespace petal {

namespace {

constexpr std::size_t longestLine = std::size_t{1} << 20;

} // namespace

void Lines::add(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        begun_ += bytes.substr(0, end);
        if (end == std::string_view::npos && begun_.size() < longestLine) {
            return;
        }
        begun_ += '\n';
        take(begun_);
        begun_.clear();
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
}

void Lines::end() {
    if (!begun_.empty()) {
        add("\n");
    }
}

void Lines::take(std::string_view line) {
    last_ = line.substr(0, line.size() - 1);
    taker_(line);
}

} // namespace petal
