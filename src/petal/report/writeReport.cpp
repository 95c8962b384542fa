#include "host/log/Severity.h"
#include "petal/report/reportForm.h"
#include "petal/report/reports.h"
#include "text/IndentedJson.h"
#include "text/escape.h"

namespace petal {

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
