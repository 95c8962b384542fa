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

/// Passes `text` to `put` in runs; U+FFFD is a run by itself. Returns how often that was put in.
template <class Put>
std::uint64_t repair(std::string_view text, const Put& put) {
    std::uint64_t count = 0;
    std::size_t passed = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (text[at] >= ' ') { // of ASCII, as the bytes beyond it are negative
            ++at;
        } else if (!isXmlCharacter(text::nextCharacter(text, at))) {
            put(text.substr(passed, start - passed));
            put(replacement);
            passed = at;
            ++count;
        }
    }
    put(text.substr(passed));
    return count;
}
static_assert(static_cast<char>(0x80) < 0);

} // namespace

std::string xmlText(std::string_view text) {
    std::string result;
    repair(text, [&](std::string_view run) { result += run; });
    return result;
}

XmlWriter::XmlWriter(text::Output* output) {
    if (output != nullptr) {
        buffer_.emplace(*output);
        buffer_->put(R"(<?xml version="1.0" encoding="UTF-8"?>)"
                     "\n");
    }
}

void XmlWriter::putEscaped(std::string_view value, Within within) {
    replaced_ += repair(value, [&](std::string_view run) {
        if (!buffer_) {
            return;
        }
        std::size_t passed = 0;
        for (std::size_t at = 0; at < run.size(); ++at) {
            const std::string_view reference = referenceTo(run[at], within == Within::quotes);
            if (!reference.empty()) {
                buffer_->put(run.substr(passed, at - passed));
                buffer_->put(reference);
                passed = at + 1;
            }
        }
        buffer_->put(run.substr(passed));
    });
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

void XmlWriter::start(const char* name, Layout layout) {
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

void XmlWriter::attribute(const char* name, std::string_view value) {
    if (buffer_) {
        buffer_->put(' ');
        buffer_->put(name);
        buffer_->put("=\"");
    }
    putEscaped(value, Within::quotes);
    if (buffer_) {
        buffer_->put('"');
    }
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
