#include "petal/LogWriter.h"

#include "petal/namedDescriptor.h"
#include "petal/outputFailure.h"
#include "petal/writeFully.h"

#include <cerrno>

namespace petal {

namespace {

std::FILE* openLog(const std::string& path) {
    const int descriptor = namedDescriptor(path);
    std::FILE* file = descriptor >= 0 ? ::fdopen(duplicate(descriptor), "w") : std::fopen(path.c_str(), "we");
    if (file == nullptr) {
        throwErrno();
    }
    std::setvbuf(file, nullptr, _IOLBF, BUFSIZ); // each line is there at once, whatever becomes of the process
    return file;
}

} // namespace

LogWriter::LogWriter(const std::optional<std::string>& path, const LogFormat& format, const KelString& encoding)
    : path_(path.value_or("-")), format_(format), logText_(encoding) {
    if (path_ == "-") {
        return;
    }
    try {
        file_.reset(openLog(path_));
    } catch (const std::system_error& error) {
        throw outputFailure("the log '" + path_ + "'", error);
    }
}

LogWriter::~LogWriter() = default;

void LogWriter::record(const KelLogEvent& event) {
    KelString text(event.getText());
    if (!event.getFurtherText().isEmpty()) {
        text.append(" ").append(event.getFurtherText().view());
    }
    const std::string line = format_.line(event, logText_.toUtf8(text).view());
    std::FILE* file = file_ != nullptr ? file_.get() : stderr;
    if (std::fwrite(line.data(), 1, line.size(), file) != line.size() && error_ == 0) {
        error_ = errno;
    }
}

void LogWriter::close() {
    if (file_ == nullptr) {
        return;
    }
    if (std::fclose(file_.release()) != 0 && error_ == 0) {
        error_ = errno;
    }
    if (error_ != 0) {
        throw outputFailure("the log '" + path_ + "'", std::system_error(error_, std::generic_category()));
    }
}

} // namespace petal
