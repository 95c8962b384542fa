#pragma once

#include "text/Output.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct _xmlTextWriter;

namespace exporter {

/// Where an element stands: on lines of its own, with each child on another line, or with all of its content on one
/// line.
enum class Layout : std::uint8_t { block, line };

/// Writes an XML document in UTF-8 with libxml2.
///
/// Texts may be any bytes: U+FFFD takes the place of each invalid sequence and of each character that XML 1.0 cannot
/// hold. Line ends in texts are written as character references, so that an element of `Layout::line` is one line of
/// the file. The indentation stops growing at 40 spaces, and the size of a document is proportional to its contents at
/// any depth.
///
/// Every function throws what the output throws, or `std::bad_alloc`; the document must then be given up.
class XmlWriter {
public:
    /// The output must outlive it. Without one (null) nothing is written: the writer then only counts.
    explicit XmlWriter(text::Output* output);
    XmlWriter(const XmlWriter&) = delete;
    XmlWriter& operator=(const XmlWriter&) = delete;
    ~XmlWriter();

    [[nodiscard]] bool isCounting() const { return writer_ == nullptr; }
    /// The characters and invalid sequences that U+FFFD has replaced so far.
    [[nodiscard]] std::uint64_t getReplacedCount() const { return replaced_; }

    /// Within an element of `Layout::line` every element is of that layout.
    void start(const char* name, Layout layout);
    /// Only before the content of the element started last.
    void attribute(const char* name, std::string_view value);
    void text(std::string_view value);
    void end();
    /// Ends the document and flushes it. Every element must have been ended.
    void finish();

private:
    void startLine();
    void check(int result) const;
    /// As a text that libxml2 takes; valid until the next call.
    const unsigned char* checked(std::string_view value);

    std::unique_ptr<text::BufferedOutput> buffer_;
    _xmlTextWriter* writer_ = nullptr;
    std::exception_ptr failure_; // of the output
    std::string scratch_;
    std::size_t depth_ = 0;
    std::size_t inLine_ = 0; // the open elements from the outermost of `Layout::line` inwards
    std::uint64_t replaced_ = 0;

    static int write(void* self, const char* bytes, int length);
};

/// `text` as an XML document can hold it, with U+FFFD for all else.
[[nodiscard]] std::string xmlText(std::string_view text);

} // namespace exporter
