#pragma once

#include "text/Output.h"

#include <cstddef>
#include <string_view>

namespace exporter {

/// Writes the lines of an outline. The indentation stops growing at 40 spaces; a line below that tells its depth.
class OutlineLines {
public:
    explicit OutlineLines(text::BufferedOutput& output) : output_(output) {}

    /// The depth of the lines to come; 0 for those at the margin.
    void setDepth(std::size_t depth) { depth_ = depth; }
    [[nodiscard]] std::size_t getDepth() const { return depth_; }

    /// `text` is printable already and without line ends.
    void line(std::string_view text);
    /// A raw text of several lines behind `title`, each made printable; further lines begin with "|".
    void paragraph(std::string_view title, std::string_view text);

private:
    text::BufferedOutput& output_;
    std::size_t depth_ = 0;
};

} // namespace exporter
