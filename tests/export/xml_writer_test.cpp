#include "export/uml/XmlWriter.h"
#include "support/Written.h"

#include <gtest/gtest.h>

namespace {

using exporter::Layout;
using exporter::XmlWriter;

// The writer looks at blocks of bytes, so what it must find may be anywhere in one, or between two.
TEST(XmlWriter, EscapesAtEveryPlaceOfATextOfAnyLength) {
    struct Case {
        std::string text;
        std::string inText;
        std::string inQuotes;
        bool isReplaced = false;
    };
    const Case cases[] = {
        {"&", "&amp;", "&amp;"},
        {"<", "&lt;", "&lt;"},
        {">", "&gt;", "&gt;"},
        {"\"", "&quot;", "&quot;"},
        {"\n", "&#10;", "&#10;"},
        {"\t", "\t", "&#9;"},
        {"\x7F", "\x7F", "\x7F"},
        {"é", "é", "é"},
        {"\x01", "\uFFFD", "\uFFFD", true},
        {"\xE2\x82", "\uFFFD", "\uFFFD", true},
        {"\uFFFF", "\uFFFD", "\uFFFD", true},
    };
    constexpr std::size_t longest = 35;
    for (const Case& one : cases) {
        for (std::size_t length = 0; length <= longest; ++length) {
            for (std::size_t at = 0; at <= length; ++at) {
                const std::string before(at, 'a');
                const std::string after(length - at, 'z');
                const std::string text = before + one.text + after;
                MemoryOutput output;
                XmlWriter xml(&output);
                XmlWriter counter(nullptr);
                for (XmlWriter* writer : {&xml, &counter}) {
                    writer->start("e", Layout::line);
                    writer->attribute("v", text);
                    writer->text(text);
                    writer->end();
                    writer->finish();
                    EXPECT_EQ(writer->getReplacedCount(), one.isReplaced ? 2U : 0U);
                }
                EXPECT_EQ(output.text, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<e v=\"" + before + one.inQuotes +
                                           after + "\">" + before + one.inText + after + "</e>\n");
                EXPECT_EQ(exporter::xmlText(text), before + (one.isReplaced ? "\uFFFD" : one.text) + after);
            }
        }
    }
}

} // namespace
