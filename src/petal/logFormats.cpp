#include "petal/logFormats.h"

#include "export/printableText.h"
#include "export/utf8.h"
#include "host/log/Severity.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>

namespace petal {

namespace {

const char* severityOf(const KelLogEvent& event) {
    const char* word = severityWord(event.getSeverityLevel());
    return word != nullptr ? word : "";
}

std::string textLine(const KelLogEvent& event, std::string_view text) {
    return std::string(severityOf(event)) + ": [" + event.getCode().text() + "] " + exporter::printableText(text) +
           "\n";
}

std::string jsonLine(const KelLogEvent& event, std::string_view text) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    const auto member = [&writer](const char* name, std::string_view value) {
        const std::string valid = exporter::repairedUtf8(value);
        writer.Key(name);
        writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    };
    writer.StartObject();
    member("severity", severityOf(event));
    member("code", event.getCode().view());
    member("text", text);
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

constexpr std::array formats{
    LogFormat{"text", textLine},
    LogFormat{"json", jsonLine},
};

} // namespace

const LogFormat* findLogFormat(std::string_view name) {
    const auto* found = std::ranges::find(formats, name, &LogFormat::name);
    return found != formats.end() ? found : nullptr;
}

} // namespace petal
