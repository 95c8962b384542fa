#include "export/outline/OutlineLines.h"

#include "text/escape.h"

#include <algorithm>
#include <string>

namespace exporter {

namespace {

constexpr std::size_t spacesPerLevel = 2;
constexpr std::size_t mostSpaces = 40;

} // namespace

void OutlineLines::line(std::string_view text) {
    const std::size_t spaces = depth_ * spacesPerLevel;
    output_.putRepeated(' ', std::min(spaces, mostSpaces));
    if (spaces > mostSpaces) {
        output_.put("(depth " + std::to_string(depth_) + ") ");
    }
    output_.put(text);
    output_.put('\n');
}

void OutlineLines::paragraph(std::string_view title, std::string_view text) {
    std::string prefix = std::string(title) + ": ";
    while (true) {
        const std::size_t end = text.find('\n');
        std::string_view piece = text.substr(0, end);
        if (end != std::string_view::npos && piece.ends_with('\r')) {
            piece.remove_suffix(1);
        }
        line(prefix + text::printableText(piece));
        if (end == std::string_view::npos || end + 1 == text.size()) {
            return;
        }
        text.remove_prefix(end + 1);
        prefix = "  | ";
    }
}

} // namespace exporter
