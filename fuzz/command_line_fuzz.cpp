// Whatever arguments the program gets, it ends with a documented status, says why it failed, and drives no terminal.
// Each line of the input is an argument; MODEL stands for the path of a model file. Command lines that name a file to
// write, or another that is there, or several, or have an option not known here, are only parsed.

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
#include <sstream>

namespace {

constexpr std::string_view modelBody = "(object Class_Category \"Logical View\"\n(object Class \"A\xE9\"\n";

constexpr std::string_view knownOptions[] = {"-",         "--",          "-h",           "--help",
                                             "--version", "--types",     "--encoding",   "--format",
                                             "--log",     "--log-level", "--log-format", "--json"};

const fuzz::MemoryFile& modelFile() {
    struct Model : fuzz::MemoryFile {
        Model() { put(std::string(petalHeader) + std::string(modelBody)); }
    };
    static const Model file;
    return file;
}

std::vector<std::string> argumentsIn(const std::uint8_t* bytes, std::size_t size) {
    std::vector<std::string> arguments{"petal"};
    std::istringstream lines(std::string(reinterpret_cast<const char*>(bytes), size));
    for (std::string argument; std::getline(lines, argument);) {
        argument.erase(std::min(argument.find('\0'), argument.size()));
        arguments.push_back(argument == "MODEL" ? modelFile().getPath() : argument);
    }
    return arguments;
}

std::vector<const char*> pointersTo(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    return pointers;
}

bool isStream(const std::optional<std::string>& written) {
    return !written || *written == "-" || *written == "/dev/stdout" || *written == "/dev/stderr";
}

/// The model, standard input, which is empty, or nothing: folders are not gone through.
bool isHarmless(const std::string& read) {
    std::error_code unseen; // a name too long is the name of nothing
    return read == modelFile().getPath() || read == "-" || !std::filesystem::exists(read, unseen);
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

/// Whether an argument is no option that could write a file that `mayRun` does not know of.
bool isKnown(std::string_view argument) {
    return !argument.starts_with('-') || argument.starts_with("-o") ||
           std::ranges::find(knownOptions, argument.substr(0, argument.find('='))) != std::end(knownOptions);
}

bool mayRun(const petal::Request& request, const std::vector<std::string>& arguments) {
    const auto isAllHarmless = [](const std::vector<std::string>& files) {
        return std::ranges::all_of(files, isHarmless);
    };
    return std::ranges::all_of(arguments, isKnown) && isStream(request.import.output) && isStream(request.import.log) &&
           isStream(request.merge.output) && request.jobs.inputs.size() <= 1 && isAllHarmless(request.jobs.inputs) &&
           isAllHarmless(request.merge.reports) && isAllHarmless(request.info.files);
}

int runWith(const std::vector<const char*>& arguments) {
    return petal::run(static_cast<int>(arguments.size()), arguments.data());
}

/// The program is made to import once. An import that fails empties the model of those before it.
void emptyModel() {
    const int status = runWith({"petal", "import", ""});
    fuzz::require(status == petal::exitNumber(petal::Outcome::importFailed), "a file without a name is imported");
}

bool mayEndWith(int status, const std::optional<petal::Request>& request) {
    if (!request) {
        return status == petal::exitNumber(petal::Outcome::wrongUsage);
    }
    using enum petal::Command;
    const bool mayFail = request->command == import || request->command == info || request->command == mergeReports;
    return mayFail ? std::ranges::count(petal::exitStatuses(), status, &petal::ExitStatus::number) > 0 : status == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<std::string> words = argumentsIn(bytes, size);
    const std::vector<const char*> arguments = pointersTo(words);
    const std::optional<petal::Request> request = requestOf(arguments);
    if (request && !mayRun(*request, words)) {
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
    if (status == 0) {
        streams.start();
        emptyModel();
        streams.stop();
    }
    return 0;
}
