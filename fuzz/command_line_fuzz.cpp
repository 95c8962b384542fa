// Whatever arguments the program gets, it ends with a status that its command may end with, says why it failed, and
// drives no terminal. Each line of the input is an argument; the words of `givenFiles` stand for the paths of files in
// memory. Command lines that would write a file, read another that is there, or start a process are only parsed.

#include "CapturedStreams.h"
#include "MemoryFile.h"
#include "petal/Failure.h"
#include "petal/commandLine.h"
#include "petal/exitStatus.h"
#include "petal/run.h"
#include "require.h"
#include "support/ImportedModel.h"
#include "textFault.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <sstream>

namespace {

constexpr std::string_view modelBody = "(object Class_Category \"Logical View\"\n(object Class \"A\xE9\"\n";
constexpr std::string_view splitModelBody =
    "(object Design \"Logical View\"\n root_category (object Class_Category \"Logical View\"\n"
    " logical_models (list u\n(object Class_Category \"P\xE9\"\n is_unit TRUE\n is_loaded FALSE\n"
    " file_name \"$CURDIR\\\\none.cat\"))))\n";
constexpr std::string_view reportText =
    R"({"format":"petal-report","formatVersion":1,"files":[{"file":"a","state":"failed","text":"\u0085"}]})";

/// A file that arguments may name by a word of its own.
struct GivenFile {
    GivenFile(std::string_view word, const std::string& contents) : word(word) { file.put(contents); }

    std::string_view word;
    fuzz::MemoryFile file;
};

std::span<const GivenFile> givenFiles() {
    static const GivenFile files[] = {{"MODEL", std::string(petalHeader) + std::string(modelBody)},
                                      {"SPLIT", std::string(petalHeader) + std::string(splitModelBody)},
                                      {"REPORT", std::string(reportText)}};
    return files;
}

std::string argumentFor(std::string word) {
    word.erase(std::min(word.find('\0'), word.size()));
    const auto given = std::ranges::find(givenFiles(), word, &GivenFile::word);
    return given == givenFiles().end() ? word : given->file.getPath();
}

std::vector<std::string> argumentsIn(const std::uint8_t* bytes, std::size_t size) {
    std::vector<std::string> arguments{"petal"};
    std::istringstream lines(std::string(reinterpret_cast<const char*>(bytes), size));
    for (std::string word; std::getline(lines, word);) {
        arguments.push_back(argumentFor(word));
    }
    return arguments;
}

std::vector<const char*> pointersTo(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers;
    pointers.reserve(arguments.size());
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    return pointers;
}

bool isStream(const std::optional<std::string>& written) {
    return !written || *written == "-" || *written == "/dev/stdout" || *written == "/dev/stderr";
}

/// A file of the target's own, standard input, which is empty, or nothing: folders are not gone through.
bool isHarmless(const std::string& read) {
    const auto isIt = [&](const GivenFile& given) { return read == given.file.getPath(); };
    std::error_code unseen; // a name too long is the name of nothing
    return read == "-" || std::ranges::any_of(givenFiles(), isIt) || !std::filesystem::exists(read, unseen);
}

bool areHarmless(const std::vector<std::string>& read) {
    return std::ranges::all_of(read, isHarmless);
}

bool areHarmlessMaps(const std::vector<std::string>& maps) {
    return std::ranges::all_of(maps, [](const std::string& map) { return isHarmless(map.substr(map.find('=') + 1)); });
}

/// An option that names files or folders, and whether those that a request names may be written or read.
struct FileOption {
    std::string_view name; // empty for what stands without one
    bool (*isFree)(const petal::Request& request);
};

constexpr FileOption fileOptions[] = {
    {"-o",
     [](const petal::Request& request) {
         return std::ranges::all_of(request.import.outputs, [](const std::string& path) { return isStream(path); }) &&
                isStream(request.merge.output) && isStream(request.draw.output) && isStream(request.diff.output);
     }},
    {"--log", [](const petal::Request& request) { return isStream(request.import.log); }},
    {"--ledger", [](const petal::Request& request) { return isStream(request.import.ledger); }},
    {"--report", [](const petal::Request& request) { return isStream(request.jobs.report); }},
    {"--files-from", [](const petal::Request& request) { return isHarmless(request.jobs.filesFrom.value_or("-")); }},
    {"--path-map",
     [](const petal::Request& request) {
         return areHarmlessMaps(request.import.units.pathMaps) && areHarmlessMaps(request.units.units.pathMaps) &&
                areHarmlessMaps(request.draw.units.pathMaps) && areHarmlessMaps(request.diff.units.pathMaps);
     }},
    {"--unit-dir",
     [](const petal::Request& request) {
         return areHarmless(request.import.units.folders) && areHarmless(request.units.units.folders) &&
                areHarmless(request.draw.units.folders) && areHarmless(request.diff.units.folders);
     }},
    {"--ignore-file", [](const petal::Request& request) { return areHarmless(request.diff.ignoreFiles); }},
    {"",
     [](const petal::Request& request) {
         return areHarmless(request.jobs.inputs) && areHarmless(request.merge.reports) &&
                areHarmless(request.info.files) && areHarmless(request.units.files) &&
                areHarmless(request.draw.inputs) && areHarmless(request.diff.models) &&
                isHarmless(request.textconv.file);
     }},
};

/// Every option of the parser that names files must be among those above.
void checkFileOptions() {
    for (const petal::CommandText& command : petal::commandTexts()) {
        for (const petal::OptionText& option : command.options) {
            const bool namesFiles = option.names.empty() || option.value.find("FILE") != std::string::npos ||
                                    option.value.find("FOLDER") != std::string::npos;
            const std::string name = option.names.empty() ? "" : option.names.front();
            fuzz::require(!namesFiles ||
                              std::ranges::find(fileOptions, name, &FileOption::name) != std::end(fileOptions),
                          "nothing says which files '" + name + "' of '" + command.name + "' may name");
        }
    }
}

/// What the arguments ask for, or nothing when they are refused.
std::optional<petal::Request> requestOf(const std::vector<const char*>& arguments) {
    try {
        return petal::parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    } catch (const petal::Failure& failure) {
        fuzz::require(failure.getOutcome() == petal::Outcome::wrongUsage, "a refusal for another reason");
        return std::nullopt;
    }
}

/// Several files, and those with limits or a report, are imported in processes of their own.
bool staysInProcess(const petal::JobsRequest& jobs) {
    const bool isWatched = jobs.timeout || jobs.maxMemory || jobs.report;
    return jobs.inputs.size() <= 1 && !jobs.filesFrom && (jobs.inProcess || !isWatched);
}

bool mayRun(const petal::Request& request) {
    const bool isImporting = request.diff.models.size() > 1; // in processes of their own
    return staysInProcess(request.jobs) && request.draw.inputs.size() <= 1 && !isImporting &&
           std::ranges::all_of(fileOptions, [&](const FileOption& option) { return option.isFree(request); });
}

int runWith(const std::vector<const char*>& arguments) {
    return petal::run(static_cast<int>(arguments.size()), arguments.data());
}

/// The program is made to import once. An import that fails empties the model of those before it.
void emptyModel() {
    const int status = runWith({"petal", "import", ""});
    fuzz::require(status == petal::exitNumber(petal::Outcome::importFailed), "a file without a name is imported");
}

/// What the statuses of a command may be; 0 alone for one without a row.
struct Statuses {
    petal::Command command;
    std::string_view numbers;
};
constexpr Statuses statuses[] = {
    {petal::Command::import, "01234"}, {petal::Command::textconv, "012"},    {petal::Command::info, "015"},
    {petal::Command::units, "01245"},  {petal::Command::mergeReports, "01"}, {petal::Command::draw, "0124"},
    {petal::Command::diff, "012"},
};

bool mayEndWith(int status, const std::optional<petal::Request>& request) {
    if (!request) {
        return status == petal::exitNumber(petal::Outcome::wrongUsage);
    }
    const auto row = std::ranges::find(statuses, request->command, &Statuses::command);
    const std::string_view numbers = row == std::end(statuses) ? "0" : row->numbers;
    return numbers.find(std::to_string(status)) != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<std::string> words = argumentsIn(bytes, size);
    const std::vector<const char*> arguments = pointersTo(words);
    const std::optional<petal::Request> request = requestOf(arguments);
    static const bool isChecked = (checkFileOptions(), true);
    if (request && !(isChecked && mayRun(*request))) {
        return 0;
    }
    static fuzz::CapturedStreams streams;
    streams.start();
    const int status = runWith(arguments);
    streams.stop();
    fuzz::require(mayEndWith(status, request), "the program ends with " + std::to_string(status));
    fuzz::require(status == 0 || !streams.errors().empty(), "a failure without a word");
    fuzz::requireNone(fuzz::textFault(streams.output()));
    fuzz::requireNone(fuzz::textFault(streams.errors()));
    if (request && (request->command == petal::Command::import || request->command == petal::Command::textconv)) {
        streams.start();
        emptyModel();
        streams.stop();
    }
    return 0;
}
