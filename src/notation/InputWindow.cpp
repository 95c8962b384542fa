#include "notation/InputWindow.h"

#include <cstring>

namespace notation {

bool InputWindow::refill(const char* keep) {
    const auto kept = static_cast<std::size_t>(limit_ - keep);
    if (keep != buffer_.get()) {
        origin_ = offsetOf(keep);
        std::memmove(buffer_.get(), keep, kept);
        limit_ = buffer_.get() + kept;
        *limit_ = '\0';
    }
    if (kept == capacity_) {
        return false;
    }
    const std::size_t count = source_.read(limit_, capacity_ - kept);
    limit_ += count;
    *limit_ = '\0';
    return count > 0;
}

} // namespace notation
