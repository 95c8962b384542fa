// Texts of a model that try to break a document or to drive the terminal of whoever reads it.

#include "host/encoding/KelTextDecoder.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "petal/logFormats.h"
#include "support/ImportedModel.h"
#include "support/Written.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

namespace {

using namespace std::string_literals;

/// What comes between the quotes of a name in the file, and what the name is in the end.
struct HostileText {
    const char* encoding;
    std::string bytes;
    std::string name;
};

const HostileText texts[] = {
    {"windows-1252", "\x1B]0;title\x07\x1B[2J\x1B[31m", "\x1B]0;title\x07\x1B[2J\x1B[31m"},
    {"windows-1252", "a\rb\tc\x7F\x08", "a\rb\tc\x7F\x08"},
    {"windows-1252", R"(\", "admin": true, \)", R"(\)"}, // a quote ends a name, whatever stands before it
    {"windows-1252", R"(</script>&<!--\u0041)", R"(</script>&<!--\u0041)"},
    {"ISO-8859-1", "\x9B\x32J\x85\x90", "\u009B2J\u0085\u0090"},
    {"UTF-8", "\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\xA8", "\u202E\u2066\u2028"},
    {"UTF-8", "caf\xE9\xC0\xAF\xED\xA0\x80\xF4\x90\x80\x80", "caf\xE9\xC0\xAF\xED\xA0\x80\xF4\x90\x80\x80"},
    {"unknown", "\x80\xFF\xFE", "\x80\xFF\xFE"},
    {"UTF-8", "{0}{1}%s%n%1$n", "{0}{1}%s%n%1$n"},
};

/// The text in all places that an import writes out.
std::string fileWith(const std::string& text) {
    const std::string quoted = " \"" + text + "\"\n";
    return "(object Class_Category \"Logical View\"\n(object Class_Category" + quoted + " stereotype" + quoted +
           "(object Class" + quoted + " stereotype" + quoted + " documentation" + quoted + "(object ClassAttribute" +
           quoted + "type" + quoted + "initv" + quoted + "(object Operation" + quoted + "result" + quoted +
           "semantics x\nPDL" + quoted + " (object Parameter" + quoted + " (object Association" + quoted +
           " (object Role" + quoted + " supplier" + quoted + " (object Role" + quoted + " supplier" + quoted +
           " client_cardinality (value cardinality" + quoted + "(object ClassDiagram" + quoted + " label" + quoted;
}

/// Whether the text has nothing but line feeds that a terminal would not show. C1 controls are two bytes in UTF-8.
bool onlyShows(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : 0);
        if ((byte < 0x20 && byte != '\n') || byte == 0x7F || (byte == 0xC2 && next < 0xA0)) {
            return false;
        }
    }
    return text.find("\u202E") == std::string_view::npos;
}

/// The log's lines, as petal writes them.
class WrittenLog final : public KelLog {
public:
    explicit WrittenLog(const char* encoding) : decoder_(encoding) {}
    void record(const KelLogEvent& event) override {
        const std::string text = decoder_.toUtf8(event.getText().view());
        for (const char* format : {"text", "json"}) {
            lines.push_back(petal::findLogFormat(format)->line(event, text));
        }
    }
    std::vector<std::string> lines;

private:
    KelTextDecoder decoder_;
};

TEST(HostileTextsTest, NeitherBreakADocumentNorDriveATerminal) {
    for (const HostileText& text : texts) {
        const ImportedModel imported = ImportedModel::ofBody(fileWith(text.bytes), {.encoding = text.encoding});
        ASSERT_EQ(imported.failure, "");
        const auto& logicalView = static_cast<KelDesignPackage&>(*imported.model.childPackages()[0]);
        EXPECT_EQ(logicalView.childPackages()[0]->getName().view(), text.name);

        const std::string json = writtenAs("json", imported.model);
        EXPECT_TRUE(onlyShows(json)) << json;
        rapidjson::Document document;
        document.Parse<rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
        ASSERT_FALSE(document.HasParseError()) << json;
        const rapidjson::Value* name = rapidjson::Pointer("/model/packages/0/packages/0/name").Get(document);
        ASSERT_NE(name, nullptr);
        if (!document.HasMember("lossy")) {
            EXPECT_EQ(std::string_view(name->GetString(), name->GetStringLength()), text.name);
        }
        EXPECT_TRUE(onlyShows(writtenAs("tree", imported.model)));
    }
}

TEST(HostileTextsTest, LogLinesStayLines) {
    for (const HostileText& text : texts) {
        WrittenLog log(text.encoding);
        const KelLogEvent event(KelString("Creating class " + text.bytes + "..."), "X_D0001", 5, "");
        log.record(event);
        for (const std::string& line : log.lines) {
            EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        }
        EXPECT_TRUE(onlyShows(log.lines[0])) << log.lines[0];
        rapidjson::Document document;
        document.Parse<rapidjson::kParseValidateEncodingFlag>(log.lines[1].data(), log.lines[1].size());
        EXPECT_FALSE(document.HasParseError()) << log.lines[1];
    }
}

} // namespace
