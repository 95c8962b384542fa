#include "petal/LogText.h"
#include "petal/LogWriter.h"

#include "Folder.h"
#include "host/log/Severity.h"

namespace {

TEST(LogText, BringsNamesToUtf8) {
    struct Row {
        const char* encoding;
        const char* text;
        const char* expected;
    };
    constexpr Row rows[] = {
        {"windows-1252", "Creating caf\xE9", "Creating caf\xC3\xA9"},
        {"windows-936", "\xD6\xD0", "\xE4\xB8\xAD"},
        {"UTF-8", "caf\xE9", "caf\uFFFD"},
        {"unknown", "caf\xE9", "caf\xE9"},
        {"UTF-16", "Creating caf\xC3\xA9", "Creating caf\xC3\xA9"}, // no message is in it
        {"windows-1252", "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(petal::LogText(row.encoding).toUtf8(row.text).view(), row.expected) << row.encoding;
    }
}

class Log : public InFolder {
protected:
    /// What the log holds after one warning.
    std::string logged(const char* format, const char* text, const KelString& furtherText = emptyString) {
        petal::LogWriter log(pathOf("log"), *petal::findLogFormat(format), "unknown");
        log.record(KelLogEvent(text, "X_W0001", severityLevel("WARNING"), furtherText));
        log.close();
        return get("log");
    }
};

TEST_F(Log, WritesALineForEachEvent) {
    EXPECT_EQ(logged("text", "a \x1B[1m\n\xE9"), "WARNING: [X_W0001] a \\x1b[1m\\n\\xe9\n");
    EXPECT_EQ(logged("text", "a", "b"), "WARNING: [X_W0001] a b\n");
    EXPECT_EQ(logged("json", "\"a\"\n\xE9"),
              "{\"severity\":\"WARNING\",\"code\":\"X_W0001\",\"text\":\"\\\"a\\\"\\n\uFFFD\"}\n");
}

} // namespace
