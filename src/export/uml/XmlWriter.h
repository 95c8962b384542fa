#pragma once

#include "text/Output.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exporter {

/// Where an element stands: on lines of its own, with each child on another line, or with all of its content on one
/// line.
enum class Layout : std::uint8_t { block, line };

/// Writes an XML document in UTF-8.
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

    [[nodiscard]] bool isCounting() const { return !buffer_; }
    /// The characters and invalid sequences that U+FFFD has replaced so far.
    [[nodiscard]] std::uint64_t getReplacedCount() const { return replaced_; }

    /// Within an element of `Layout::line` every element is of that layout. `name` must be a name of XML, and live
    /// until the element is ended.
    void start(std::string_view name, Layout layout);
    /// Only before the content of the element started last. `name` must be a name of XML.
    void attribute(std::string_view name, std::string_view value);
    /// The same for a value of printable ASCII without `&`, `<`, `>` and quotes, such as an id.
    void plainAttribute(std::string_view name, std::string_view value);
    void text(std::string_view value);
    void end();
    /// Ends the document and flushes it. Every element must have been ended.
    void finish();

private:
    /// What characters mean by themselves within a text and within the quotes of an attribute differs.
    enum class Within : std::uint8_t { text, quotes };

    void startContent();
    void startLine();
    void startValue(std::string_view name);
    void putEscaped(std::string_view value, Within within);

    std::optional<text::BufferedOutput> buffer_;
    std::vector<std::string_view> open_; // the names of the elements that have not ended
    std::size_t inLine_ = 0;             // of those, from the outermost of `Layout::line` inwards
    bool isInTag_ = false;               // the start tag of the last one lacks its end
    std::uint64_t replaced_ = 0;
};

/// `text` as an XML document can hold it, with U+FFFD for all else.
[[nodiscard]] std::string xmlText(std::string_view text);

} // namespace exporter
