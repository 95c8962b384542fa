#pragma once

#include "text/Output.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

/// Keeps what is written, and fails at the write number `failAt` (from 0).
class MemoryOutput final : public text::Output {
public:
    explicit MemoryOutput(std::size_t failAt = static_cast<std::size_t>(-1)) : failAt_(failAt) {}

    void write(std::string_view bytes) override {
        if (writes++ == failAt_) {
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        }
        text += bytes;
        longestWrite = std::max(longestWrite, bytes.size());
    }

    std::string text;
    std::size_t writes = 0;
    std::size_t longestWrite = 0;

private:
    std::size_t failAt_;
};
