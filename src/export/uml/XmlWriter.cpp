#include "export/uml/XmlWriter.h"

#include "text/utf8.h"

#include <algorithm>

namespace exporter {

namespace {

constexpr std::string_view replacement = "\uFFFD";
/// A line end and the widest indentation.
constexpr std::string_view lineStart = "\n                                        ";
constexpr std::size_t indentation = 2;

bool isXmlCharacter(int character) {
    return character >= 0x20 ? character != 0xFFFE && character != 0xFFFF
                             : character == '\t' || character == '\n' || character == '\r';
}

/// The reference that stands for a character of ASCII; empty when it stands for itself. A reader turns the white space
/// of an attribute into blanks, and carriage returns into line ends.
std::string_view referenceTo(char character, bool isQuoted) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    case '\t':
        return isQuoted ? "&#9;" : "";
    default:
        return "";
    }
}

/// Whether the byte never stands for itself alone: it is a control byte, or markup, or not of ASCII, as those bytes are
/// negative.
bool isSpecial(char byte) {
    return (static_cast<int>(byte < ' ') | static_cast<int>(byte == '&') | static_cast<int>(byte == '<') |
            static_cast<int>(byte == '>') | static_cast<int>(byte == '"')) != 0;
}
static_assert(static_cast<char>(0x80) < 0);

/// The index of the first special byte from `at` on, or the length of the text.
std::size_t findSpecial(std::string_view text, std::size_t at) {
    constexpr std::size_t block = 16;
    for (; at + block <= text.size(); at += block) {
        signed char special = 0; // so that the compiler looks at a vector of bytes
        for (std::size_t index = 0; index < block; ++index) {
            const char byte = text[at + index];
            special = static_cast<signed char>(
                special | -static_cast<signed char>(byte < ' ') | -static_cast<signed char>(byte == '&') |
                -static_cast<signed char>(byte == '<') | -static_cast<signed char>(byte == '>') |
                -static_cast<signed char>(byte == '"'));
        }
        if (special != 0) {
            break;
        }
    }
    while (at < text.size() && !isSpecial(text[at])) {
        ++at;
    }
    return at;
}

/// Passes the special characters to `take`, each by its range, and what takes its place: U+FFFD where XML cannot hold
/// it, nothing for one of ASCII that it can hold. Others stand for themselves.
template <class Take>
void forEachSpecial(std::string_view text, const Take& take) {
    for (std::size_t at = findSpecial(text, 0); at < text.size(); at = findSpecial(text, at)) {
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        if (!isXmlCharacter(character)) {
            take(start, at, replacement);
        } else if (at == start + 1) {
            take(start, at, std::string_view());
        }
    }
}

} // namespace

std::string xmlText(std::string_view text) {
    std::string result;
    std::size_t passed = 0;
    forEachSpecial(text, [&](std::size_t begin, std::size_t end, std::string_view instead) {
        if (!instead.empty()) {
            result.append(text.substr(passed, begin - passed)).append(instead);
            passed = end;
        }
    });
    return result.append(text.substr(passed));
}

XmlWriter::XmlWriter(text::Output* output) {
    if (output != nullptr) {
        buffer_.emplace(*output);
        buffer_->put(R"(<?xml version="1.0" encoding="UTF-8"?>)"
                     "\n");
    }
}

void XmlWriter::putEscaped(std::string_view value, Within within) {
    std::size_t passed = 0;
    forEachSpecial(value, [&](std::size_t begin, std::size_t end, std::string_view instead) {
        replaced_ += instead.empty() ? 0 : 1;
        if (!buffer_) {
            return;
        }
        const std::string_view written =
            instead.empty() ? referenceTo(value[begin], within == Within::quotes) : instead;
        if (!written.empty()) {
            buffer_->put(value.substr(passed, begin - passed));
            buffer_->put(written);
            passed = end;
        }
    });
    if (buffer_) {
        buffer_->put(value.substr(passed));
    }
}

void XmlWriter::startContent() {
    if (isInTag_) {
        buffer_->put('>');
        isInTag_ = false;
    }
}

void XmlWriter::startLine() {
    buffer_->put(lineStart.substr(0, 1 + indentation * open_.size()));
}

void XmlWriter::start(std::string_view name, Layout layout) {
    if (!buffer_) {
        return;
    }
    startContent();
    if (inLine_ == 0 && !open_.empty()) { // the declaration ends with a line end
        startLine();
    }
    buffer_->put('<');
    buffer_->put(name);
    isInTag_ = true;
    open_.emplace_back(name);
    inLine_ += inLine_ > 0 || layout == Layout::line ? 1 : 0;
}

void XmlWriter::attribute(std::string_view name, std::string_view value) {
    if (!buffer_) {
        putEscaped(value, Within::quotes);
        return;
    }
    startValue(name);
    putEscaped(value, Within::quotes);
    buffer_->put('"');
}

void XmlWriter::plainAttribute(std::string_view name, std::string_view value) {
    if (buffer_) {
        startValue(name);
        buffer_->put(value);
        buffer_->put('"');
    }
}

void XmlWriter::startValue(std::string_view name) {
    buffer_->put(' ');
    buffer_->put(name);
    buffer_->put("=\"");
}

void XmlWriter::text(std::string_view value) {
    if (buffer_ && !value.empty()) {
        startContent();
    }
    putEscaped(value, Within::text);
}

void XmlWriter::end() {
    if (!buffer_) {
        return;
    }
    const std::string_view name = open_.back();
    open_.pop_back();
    if (inLine_ > 0) {
        --inLine_;
    } else {
        startContent();
        startLine(); // even without content, so that the first child changes no other line
    }
    if (isInTag_) {
        buffer_->put("/>");
        isInTag_ = false;
        return;
    }
    buffer_->put("</");
    buffer_->put(name);
    buffer_->put('>');
}

void XmlWriter::finish() {
    if (buffer_) {
        buffer_->put('\n');
        buffer_->flush();
    }
}

} // namespace exporter
