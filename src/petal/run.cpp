#include "petal/run.h"

#include "petal/Failure.h"
#include "petal/commandLine.h"
#include "petal/commands.h"
#include "petal/output/Descriptor.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace petal {

namespace {

/// Makes sure that no file gets the number of a standard stream that the program was started without: what is
/// meant for that stream would go into the file. Opened the wrong way round, the stream still refuses everything.
void occupyStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) {
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

/// Returns `success`, or another outcome that leaves nothing to report.
Outcome execute(const Request& request) {
    switch (request.command) {
    case Command::help:
        writeToStandardOutput(request.helpText);
        break;
    case Command::version:
        printVersions(request.isVersionJson);
        break;
    case Command::options:
        printOptions();
        break;
    case Command::specification:
        printSpecification();
        break;
    case Command::formats:
        printFormats(request.formats);
        break;
    case Command::schema:
        printSchema(request.schema);
        break;
    case Command::textconv:
        convertToText(request.textconv);
        break;
    case Command::draw:
        drawDiagrams(request.draw);
        break;
    case Command::diff:
        return diffModels(request.diff);
    case Command::info:
        printInfo(request.info);
        break;
    case Command::mergeReports:
        mergeReports(request.merge);
        break;
    case Command::units:
        printUnits(request.units);
        break;
    case Command::catalog:
        return catalogModels(request.catalog);
    case Command::import:
        return importFiles(request.import, request.jobs);
    }
    return Outcome::success;
}

int report(Outcome outcome, const char* text, const std::string& advice) {
    printFailure(text, advice);
    return exitNumber(outcome);
}

} // namespace

int run(int argc, const char* const* argv) {
    // The encoding of names, and the language of the system's messages. Numbers are as in the locale "C", and the other
    // categories would be files that each start opens.
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    occupyStandardStreams();
    try {
        return exitNumber(execute(parseCommandLine(argc, argv)));
    } catch (const Failure& failure) {
        return report(failure.getOutcome(), failure.what(), failure.getAdvice());
    } catch (const std::exception& failure) {
        return report(Outcome::unexpected, failure.what(), "");
    }
}

} // namespace petal
