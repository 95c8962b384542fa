#include "petal/run.h"

#include "export/printableText.h"
#include "petal/Failure.h"
#include "petal/commandLine.h"
#include "petal/commands.h"
#include "petal/standardOutput.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
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

void execute(const Request& request) {
    switch (request.command) {
    case Command::help:
        return writeToStandardOutput(request.helpText);
    case Command::version:
        return printVersions();
    case Command::options:
        return printOptions();
    case Command::specification:
        return printSpecification();
    case Command::import:
        return importModel(request.import);
    }
}

int report(Outcome outcome, const char* text, const std::string& advice) {
    std::string message = "petal: " + exporter::printableText(text) + "\n";
    if (!advice.empty()) {
        message += "petal: " + advice + "\n";
    }
    std::fwrite(message.data(), 1, message.size(), stderr);
    return exitNumber(outcome);
}

} // namespace

int run(int argc, const char* const* argv) {
    std::setlocale(LC_ALL, "");
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    occupyStandardStreams();
    try {
        execute(parseCommandLine(argc, argv));
        return exitNumber(Outcome::success);
    } catch (const Failure& failure) {
        return report(failure.getOutcome(), failure.what(), failure.getAdvice());
    } catch (const std::exception& failure) {
        return report(Outcome::unexpected, failure.what(), "");
    }
}

} // namespace petal
