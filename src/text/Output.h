#pragma once

#include <string_view>

namespace text {

/// Where an exporter's bytes go: a file, a pipe, a text in memory. Used by one thread at a time.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    /// Takes all of `bytes`, which live only during the call. Throws `std::system_error` when that fails; the
    /// output then holds an unknown part of them and takes no more.
    virtual void write(std::string_view bytes) = 0;
};

} // namespace text
