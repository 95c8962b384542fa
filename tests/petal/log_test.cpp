#include "petal/LogWriter.h"

#include "Folder.h"
#include "host/log/Severity.h"

namespace {

class Log : public InFolder {
protected:
    /// What the log holds after one warning.
    std::string logged(const char* format, const char* text, const KelString& furtherText = emptyString,
                       const char* encoding = "unknown") {
        petal::LogWriter log(pathOf("log"), *petal::findLogFormat(format), encoding);
        log.record(KelLogEvent(text, "X_W0001", severityLevel("WARNING"), furtherText));
        log.close();
        return get("log");
    }
};

TEST_F(Log, WritesALineForEachEvent) {
    EXPECT_EQ(logged("text", "a \x1B[1m\n\xE9"), "WARNING: [X_W0001] a \\x1b[1m\\n\\xe9\n");
    EXPECT_EQ(logged("text", "a", "b"), "WARNING: [X_W0001] a b\n");
    EXPECT_EQ(logged("text", "a", "\xD6\xD0", "windows-936"), "WARNING: [X_W0001] a \xE4\xB8\xAD\n");
    EXPECT_EQ(logged("json", "\"a\"\n\xE9"),
              "{\"severity\":\"WARNING\",\"code\":\"X_W0001\",\"text\":\"\\\"a\\\"\\n\uFFFD\"}\n");
}

} // namespace
