#pragma once

#include "text/Output.h"

#include <memory>
#include <string>
#include <string_view>

namespace html {

/// A JSON document within a page, `<script type="application/json">`: as it is, but for "<", which is escaped, so that
/// nothing in a text ends the block; over 1,000,000 bytes packed, as gzip in base64, which the block then says.
///
/// Holds the first 1,000,000 bytes, and packs what is longer as it comes. Throws what the output throws.
class DataBlock final : public text::Output {
public:
    /// The block's HTML id. `output` must live as long.
    DataBlock(text::BufferedOutput& output, std::string_view id);
    ~DataBlock() override;

    void write(std::string_view bytes) override;
    /// Ends the block. Called once, last.
    void finish();

private:
    class Packer;

    void start(std::string_view attributes);

    text::BufferedOutput& output_;
    std::string id_;
    std::string kept_;
    std::unique_ptr<Packer> packer_; // null up to the limit
};

} // namespace html
