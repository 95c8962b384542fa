#include "layout/metrics.h"

#include "text/utf8.h"

#include <array>
#include <cstdint>

namespace layout {

namespace {

constexpr int firstAdvance = 0x20;

/// Of the characters from the blank to the tilde, in thousandths of the size.
constexpr std::array<std::uint16_t, 95> advances{
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

struct Script {
    int last; // character of the range, which begins after the row before
    std::uint16_t advance;
};

/// The other characters, roughly.
constexpr std::array<Script, 10> scripts{{{0x1F, 0},
                                          {0x7E, 0}, // in the table above
                                          {0x9F, 0},
                                          {0x24F, 570},
                                          {0x2FF, 560},
                                          {0x36F, 0}, // combining marks
                                          {0x10FF, 600},
                                          {0x11FF, 1000},
                                          {0x2E7F, 600},
                                          {0x10FFFF, 1000}}};

constexpr double boldFactor = 1.06;

int advanceOf(int character) {
    if (character < 0) {
        return 600;
    }
    const auto index = static_cast<std::size_t>(character - firstAdvance);
    if (character >= firstAdvance && index < advances.size()) {
        return advances[index];
    }
    std::size_t row = 0;
    while (scripts[row].last < character) {
        ++row;
    }
    return scripts[row].advance;
}

} // namespace

double textWidth(std::string_view text, double size, bool isBold) {
    std::int64_t width = 0;
    for (std::size_t at = 0; at < text.size();) {
        const auto index = static_cast<std::size_t>(static_cast<unsigned char>(text[at]) - firstAdvance);
        if (index < advances.size()) { // as nearly all are
            width += advances[index];
            ++at;
        } else {
            width += advanceOf(text::nextCharacter(text, at));
        }
    }
    return static_cast<double>(width) * size / 1000 * (isBold ? boldFactor : 1);
}

bool isOneLine(std::string_view text, double width) {
    bool hasControls = false; // no early end, so that the compiler can look at many bytes at a time
    for (const char byte : text) {
        hasControls |= static_cast<unsigned char>(byte) < firstAdvance;
    }
    return !hasControls && !(width > 0);
}

std::vector<std::string> linesOf(std::string_view text, double size, bool isBold, double width) {
    const double unit = size / 1000 * (isBold ? boldFactor : 1);
    std::vector<std::string> lines(1);
    if (isOneLine(text, width)) {
        lines.front() = text;
        return lines;
    }
    double used = 0;
    std::size_t blank = std::string::npos; // the last one in the line
    double usedAtBlank = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        if (character == '\n') {
            lines.emplace_back();
            used = 0;
            blank = std::string::npos;
            continue;
        }
        if (character == '\r') {
            continue;
        }
        const double advance = advanceOf(character == '\t' ? ' ' : character) * unit;
        if (width > 0 && used + advance > width && !lines.back().empty() && character != ' ') {
            std::string rest;
            if (blank != std::string::npos) {
                rest = lines.back().substr(blank + 1);
                lines.back().resize(blank);
                used -= usedAtBlank;
            } else {
                used = 0;
            }
            lines.push_back(std::move(rest));
            blank = std::string::npos;
        }
        used += advance;
        if (character == ' ' || character == '\t') {
            lines.back() += ' ';
            blank = lines.back().size() - 1;
            usedAtBlank = used;
        } else {
            lines.back().append(text.substr(start, at - start));
        }
    }
    return lines;
}

} // namespace layout
