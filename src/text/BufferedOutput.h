#pragma once

#include "text/Output.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace text {

/// Gathers small pieces for an output that it does not own. What was not flushed when it is destroyed is lost:
/// a destructor could not report that the output failed. Throws what the output throws.
class BufferedOutput {
public:
    explicit BufferedOutput(Output& output);

    void put(char byte) {
        if (length_ == capacity) {
            flush();
        }
        buffer_[length_++] = byte;
    }
    void put(std::string_view bytes);
    void putRepeated(char byte, std::size_t count);
    void flush();

private:
    static constexpr std::size_t capacity = std::size_t{64} * 1024;

    Output& output_;
    std::unique_ptr<char[]> buffer_;
    std::size_t length_ = 0;
};

} // namespace text
