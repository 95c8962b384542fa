#include "host/log/Severity.h"
#include "petal/Failure.h"
#include "petal/InputFile.h"
#include "petal/report/reportForm.h"
#include "petal/report/reports.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <limits>

namespace petal {

namespace {

using rapidjson::Value;

/// What is wrong with a report, for people.
using NoReport = std::runtime_error;

const Value* find(const Value& object, const char* name) {
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() ? &found->value : nullptr;
}

void readText(const Value& object, const char* name, std::string& text) {
    if (const Value* value = find(object, name)) {
        if (!value->IsString()) {
            throw NoReport(std::string(name) + " is no text");
        }
        text.assign(value->GetString(), value->GetStringLength());
    }
}

template <class Number>
void readNumber(const Value& object, const char* name, Number& number) {
    if (const Value* value = find(object, name)) {
        const auto most = std::min(static_cast<std::uint64_t>(std::numeric_limits<Number>::max()), mostCounted);
        if (!value->IsUint64() || value->GetUint64() > most) {
            throw NoReport(std::string(name) + " is no number that may stand there");
        }
        number = static_cast<Number>(value->GetUint64());
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
    throw NoReport("there is no state '" + word + "'");
}

FileReport readFile(const Value& object) {
    if (!object.IsObject() || find(object, "file") == nullptr) {
        throw NoReport("an element of files has no name");
    }
    FileReport file;
    readText(object, "file", file.file);
    file.state = readState(object);
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
        throw NoReport("it is no JSON object");
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
        throw Failure(Outcome::inputNotRead, "'" + path + "' is no report: " + reason.what(),
                      "Name files that 'petal import --report' has written.");
    }
}

} // namespace petal
