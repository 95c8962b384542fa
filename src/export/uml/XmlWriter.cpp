#include "export/uml/XmlWriter.h"

#include "text/utf8.h"

#include <algorithm>
#include <libxml/xmlwriter.h>
#include <new>

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

/// Whether the text is ASCII that XML can hold. Nearly all texts are.
bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) {
        return (byte >= ' ') || byte == '\n' || byte == '\t' || byte == '\r'; // bytes beyond ASCII are negative
    });
}
static_assert(static_cast<char>(0x80) < 0);

/// Replaces the content of `into`; returns how often U+FFFD was put in.
std::uint64_t repair(std::string_view text, std::string& into) {
    if (isPlain(text)) {
        into = text;
        return 0;
    }
    std::uint64_t count = 0;
    into.clear();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (isXmlCharacter(text::nextCharacter(text, at))) {
            into += text.substr(start, at - start);
        } else {
            into += replacement;
            ++count;
        }
    }
    return count;
}

const xmlChar* asXml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

} // namespace

std::string xmlText(std::string_view text) {
    std::string result;
    repair(text, result);
    return result;
}

XmlWriter::XmlWriter(text::Output* output) {
    if (output == nullptr) {
        return;
    }
    buffer_ = std::make_unique<text::BufferedOutput>(*output);
    xmlOutputBuffer* target = xmlOutputBufferCreateIO(write, nullptr, this, nullptr);
    writer_ = target != nullptr ? xmlNewTextWriter(target) : nullptr;
    if (writer_ == nullptr) {
        xmlOutputBufferClose(target);
        throw std::bad_alloc();
    }
    if (xmlTextWriterStartDocument(writer_, nullptr, "UTF-8", nullptr) < 0) {
        xmlFreeTextWriter(writer_);
        throw std::bad_alloc();
    }
}

XmlWriter::~XmlWriter() {
    if (writer_ != nullptr) {
        failure_ = failure_ != nullptr ? failure_ : std::make_exception_ptr(std::bad_alloc()); // drops what is buffered
        xmlFreeTextWriter(writer_);
    }
}

/// Exceptions must not pass through libxml2, and an error would make it print to standard error.
int XmlWriter::write(void* self, const char* bytes, int length) {
    auto& writer = *static_cast<XmlWriter*>(self);
    if (writer.failure_ == nullptr) {
        try {
            writer.buffer_->put({bytes, static_cast<std::size_t>(length)});
        } catch (...) {
            writer.failure_ = std::current_exception();
        }
    }
    return length;
}

void XmlWriter::check(int result) const {
    if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
    }
    if (result < 0) {
        throw std::bad_alloc();
    }
}

const unsigned char* XmlWriter::checked(std::string_view value) {
    replaced_ += repair(value, scratch_);
    return asXml(scratch_.c_str());
}

void XmlWriter::startLine() {
    const std::size_t length = std::min(1 + indentation * depth_, lineStart.size());
    check(xmlTextWriterWriteRawLen(writer_, asXml(lineStart.data()), static_cast<int>(length)));
}

void XmlWriter::start(const char* name, Layout layout) {
    if (writer_ == nullptr) {
        return;
    }
    if (inLine_ == 0 && depth_ > 0) { // the declaration ends with a line end
        startLine();
    }
    check(xmlTextWriterStartElement(writer_, asXml(name)));
    ++depth_;
    inLine_ += inLine_ > 0 || layout == Layout::line ? 1 : 0;
}

void XmlWriter::attribute(const char* name, std::string_view value) {
    const unsigned char* content = checked(value);
    if (writer_ != nullptr) {
        check(xmlTextWriterWriteAttribute(writer_, asXml(name), content));
    }
}

void XmlWriter::text(std::string_view value) {
    checked(value);
    if (writer_ == nullptr) {
        return;
    }
    for (std::size_t at = 0; at < scratch_.size();) {
        const std::size_t end = std::min(scratch_.find('\n', at), scratch_.size());
        if (end < scratch_.size()) {
            scratch_[end] = '\0';
        }
        check(xmlTextWriterWriteString(writer_, asXml(scratch_.c_str() + at)));
        if (end < scratch_.size()) {
            check(xmlTextWriterWriteRaw(writer_, asXml("&#10;")));
        }
        at = end + 1;
    }
}

void XmlWriter::end() {
    if (writer_ == nullptr) {
        return;
    }
    --depth_;
    if (inLine_ > 0) {
        --inLine_;
    } else {
        startLine(); // even without content, so that the first child changes no other line
    }
    check(xmlTextWriterEndElement(writer_));
}

void XmlWriter::finish() {
    if (writer_ == nullptr) {
        return;
    }
    check(xmlTextWriterEndDocument(writer_));
    check(xmlTextWriterFlush(writer_));
    buffer_->flush();
}

} // namespace exporter
