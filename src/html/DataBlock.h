#pragma once

#include "text/Output.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace html {

/// Writes JSON with an escape for each "<".
void putWithoutTags(std::string_view json, text::BufferedOutput& output);

/// A JSON document within a page, `<script type="application/json">`: as it is, but for "<", which is escaped, so that
/// nothing in a text ends the block; over 1,000,000 bytes packed, as gzip in base64, which the block then says.
///
/// Holds the whole document, as the library that packs twice as fast as others needs it. Throws what the output throws,
/// and `std::bad_alloc`.
class DataBlock final : public text::Output {
public:
    /// The block's HTML id. `output` must live as long.
    DataBlock(text::BufferedOutput& output, std::string_view id);

    void write(std::string_view bytes) override;
    /// Ends the block. Called once, last.
    void finish();

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void grow(std::size_t more);
    void start(std::string_view attributes);

    text::BufferedOutput& output_;
    std::string id_;
    std::unique_ptr<char, Free> kept_; // which the C library extends without copying it once it is large
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace html
