#include "petal/report/reportForm.h"

#include "host/log/Severity.h"
#include "petal/Failure.h"
#include "petal/import/InputFile.h"
#include "petal/report/Report.h"
#include "text/IndentedJson.h"
#include "text/escape.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <limits>

namespace petal {

namespace {

using rapidjson::Value;

/// The fault of a file that is not a report; its text is for people.
using NoReport = std::runtime_error;

const Value* find(const Value& object, const char* name) {
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() ? &found->value : nullptr;
}

void readText(const Value& object, const char* name, std::string& text) {
    if (const Value* value = find(object, name)) {
        if (!value->IsString()) {
            throw NoReport(std::string(name) + " is not a text");
        }
        text.assign(value->GetString(), value->GetStringLength());
    }
}

template <class Number>
void readNumber(const Value& object, const char* name, Number& number) {
    if (const Value* value = find(object, name)) {
        const auto most = std::min(static_cast<std::uint64_t>(std::numeric_limits<Number>::max()), mostCounted);
        if (!value->IsUint64() || value->GetUint64() > most) {
            throw NoReport(std::string(name) + " is not a number in the allowed range");
        }
        number = static_cast<Number>(value->GetUint64());
    }
}

/// One output is a text, several are a list.
void readOutputs(const Value& object, std::vector<std::string>& outputs) {
    const Value* value = find(object, "output");
    if (value == nullptr || !value->IsArray()) {
        std::string output;
        readText(object, "output", output);
        outputs.assign(output.empty() ? 0 : 1, output);
        return;
    }
    for (const Value& output : value->GetArray()) {
        if (!output.IsString()) {
            throw NoReport("an element of output is not a text");
        }
        outputs.emplace_back(output.GetString(), output.GetStringLength());
    }
}

FileState readState(const Value& object) {
    using enum FileState;
    std::string word;
    readText(object, "state", word);
    for (const FileState state : {imported, upToDate, failed, notStarted}) {
        if (stateWord(state) == word) {
            return state;
        }
    }
    throw NoReport("unknown state '" + word + "'");
}

FileReport readFile(const Value& object) {
    if (!object.IsObject() || find(object, "file") == nullptr) {
        throw NoReport("an element of files has no file name");
    }
    FileReport file;
    readText(object, "file", file.file);
    file.state = readState(object);
    readOutputs(object, file.outputs);
    for (const TextMember& member : textMembers) {
        readText(object, member.name, file.*member.text);
    }
    for (const StatusMember& member : statusMembers) {
        readNumber(object, member.name, file.*member.number);
    }
    for (const CountMember& member : countMembers) {
        readNumber(object, member.name, file.counts.*member.count);
    }
    if (const Value* events = find(object, "events"); events != nullptr && events->IsObject()) {
        for (std::size_t index = 0; index < file.counts.events.size(); ++index) {
            readNumber(*events, severityWord(static_cast<int>(index) + 1), file.counts.events[index]);
        }
    }
    return file;
}

std::vector<FileReport> readFiles(const std::string& contents) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(contents.data(), contents.size());
    if (document.HasParseError() || !document.IsObject()) {
        throw NoReport("it is not a JSON object");
    }
    std::string format;
    std::int64_t version = 0;
    readText(document, "format", format);
    readNumber(document, "formatVersion", version);
    const Value* files = find(document, "files");
    if (format != reportFormat || version != reportVersion || files == nullptr || !files->IsArray()) {
        throw NoReport("its format is not version " + std::to_string(reportVersion) + " of " + reportFormat);
    }
    std::vector<FileReport> read;
    std::transform(files->Begin(), files->End(), std::back_inserter(read), readFile);
    return read;
}

} // namespace

std::vector<FileReport> readReport(const std::string& path) {
    const std::string contents = InputFile(path).readRest();
    try {
        return readFiles(contents);
    } catch (const NoReport& reason) {
        throw Failure(Outcome::inputNotRead, "'" + path + "' is not a report: " + reason.what(),
                      "Name files that 'petal import --report' wrote.");
    }
}

namespace {

class ReportWriter {
public:
    explicit ReportWriter(text::BufferedOutput& output) : json_(output) {}

    void write(const std::vector<FileReport>& files) {
        json_.startObject();
        text("format", reportFormat);
        number("formatVersion", reportVersion);
        json_.key("files");
        json_.startList();
        for (const FileReport& file : files) {
            writeFile(file);
        }
        json_.endList();
        writeTotals(files.size(), totalsOf(files));
        json_.endObject();
    }

private:
    void text(const char* name, std::string_view value) {
        json_.key(name);
        json_.text(value);
    }
    void number(const char* name, std::uint64_t value) {
        json_.key(name);
        json_.number(static_cast<std::int64_t>(value));
    }

    void writeFile(const FileReport& file) {
        json_.startObject();
        text("file", text::validText(file.file));
        text("state", stateWord(file.state));
        writeOutputs(file.outputs);
        for (const TextMember& member : textMembers) {
            if (const std::string& value = file.*member.text; !value.empty()) {
                text(member.name, text::validText(value));
            }
        }
        for (const StatusMember& member : statusMembers) {
            if (const int value = file.*member.number; value != 0) {
                number(member.name, static_cast<std::uint64_t>(value));
            }
        }
        for (const CountMember& member : countMembers) {
            if (const std::uint64_t value = file.counts.*member.count; value != 0) {
                number(member.name, value);
            }
        }
        writeEvents(file.counts.events);
        json_.endObject();
    }

    void writeOutputs(const std::vector<std::string>& outputs) {
        if (outputs.size() == 1) {
            text("output", text::validText(outputs.front()));
        } else if (!outputs.empty()) {
            json_.key("output");
            json_.startList();
            std::ranges::for_each(outputs, [&](const std::string& output) { json_.text(text::validText(output)); });
            json_.endList();
        }
    }

    void writeEvents(const EventCounts& events) {
        if (events == EventCounts{}) {
            return;
        }
        json_.key("events");
        json_.startObject();
        for (std::size_t index = 0; index < events.size(); ++index) {
            if (events[index] != 0) {
                number(severityWord(static_cast<int>(index) + 1), events[index]);
            }
        }
        json_.endObject();
    }

    void writeTotals(std::size_t files, const ReportTotals& totals) {
        json_.key("totals");
        json_.startObject();
        number("files", files);
        number("imported", totals.imported);
        number("upToDate", totals.upToDate);
        number("failed", totals.failed);
        number("notStarted", totals.notStarted);
        number("objects", totals.objects);
        number("dropped", totals.dropped);
        number("losses", totals.losses);
        number("unitsFound", totals.unitsFound);
        number("unitsMissing", totals.unitsMissing);
        if (totals.omitted != 0) {
            number("omitted", totals.omitted);
        }
        json_.endObject();
    }

    text::IndentedJson json_;
};

} // namespace

void writeReport(const std::vector<FileReport>& files, ModelOutput& output) {
    text::BufferedOutput buffered(output);
    ReportWriter(buffered).write(files);
    buffered.put('\n');
    buffered.flush();
}

} // namespace petal
