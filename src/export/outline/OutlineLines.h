#pragma once

#include "text/Output.h"

#include <cstddef>
#include <string_view>

namespace exporter {

/// Writes the lines of an outline, indented by depth. The indentation stops growing at 40 spaces; deeper lines begin
/// with their depth as a number.
class OutlineLines {
public:
    /// `output` must outlive it and is flushed by the caller.
    explicit OutlineLines(text::BufferedOutput& output) : output_(output) {}

    /// The depth of the next lines; 0 is the margin.
    void setDepth(std::size_t depth) { depth_ = depth; }
    [[nodiscard]] std::size_t getDepth() const { return depth_; }

    /// `text` must be printable and without line ends.
    void line(std::string_view text);
    /// `title` and any text, made printable; each line of the text after the first begins with "|".
    void paragraph(std::string_view title, std::string_view text);

private:
    text::BufferedOutput& output_;
    std::size_t depth_ = 0;
};

} // namespace exporter
