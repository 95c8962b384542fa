#include "text/Output.h"

#include <algorithm>

namespace text {

BufferedOutput::BufferedOutput(Output& output)
    : output_(output), buffer_(std::make_unique_for_overwrite<char[]>(capacity)) {}

void BufferedOutput::putMany(std::string_view bytes) {
    flush();
    if (bytes.size() > capacity) {
        output_.write(bytes);
        return;
    }
    std::copy(bytes.begin(), bytes.end(), buffer_.get());
    length_ = bytes.size();
}

void BufferedOutput::putRepeated(char byte, std::size_t count) {
    for (; count > 0; count -= std::min(count, capacity)) {
        const std::size_t now = std::min(count, capacity);
        if (now > capacity - length_) {
            flush();
        }
        std::fill_n(buffer_.get() + length_, now, byte);
        length_ += now;
    }
}

void BufferedOutput::flush() {
    const std::string_view gathered(buffer_.get(), length_);
    length_ = 0;
    if (!gathered.empty()) {
        output_.write(gathered);
    }
}

} // namespace text
