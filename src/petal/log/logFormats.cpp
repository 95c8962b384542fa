#include "petal/log/logFormats.h"

#include "host/log/Severity.h"
#include "text/JsonLine.h"
#include "text/escape.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

const char* severityOf(const KelLogEvent& event) {
    const char* word = severityWord(event.getSeverityLevel());
    return word != nullptr ? word : "";
}

std::string textLine(const KelLogEvent& event, std::string_view text) {
    return std::string(severityOf(event)) + ": [" + event.getCode().text() + "] " + text::printableText(text) + "\n";
}

std::string jsonLine(const KelLogEvent& event, std::string_view text) {
    text::JsonLine line;
    line.text("severity", severityOf(event));
    line.text("code", event.getCode().view());
    line.text("text", text);
    return line.finish();
}

std::string textLineOf(std::string_view line, std::string_view file) {
    return text::printableText(file) + ": " + std::string(line);
}

std::string jsonLineOf(std::string_view line, std::string_view file) {
    return "{\"file\":" + text::quotedJsonText(text::validText(file)) + "," + std::string(line.substr(1));
}

constexpr std::array formats{
    LogFormat{"text", textLine, textLineOf},
    LogFormat{"json", jsonLine, jsonLineOf},
};

} // namespace

const LogFormat* findLogFormat(std::string_view name) {
    const auto* found = std::ranges::find(formats, name, &LogFormat::name);
    return found != formats.end() ? found : nullptr;
}

} // namespace petal
