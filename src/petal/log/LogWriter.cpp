#include "petal/log/LogWriter.h"

#include "host/log/Severity.h"
#include "petal/output/Descriptor.h"
#include "petal/output/fileFailure.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace petal {

namespace {

std::FILE* open(const std::string& path) {
    const int descriptor = namedDescriptor(path);
    std::FILE* file = descriptor >= 0 ? ::fdopen(duplicate(descriptor), "w") : std::fopen(path.c_str(), "we");
    if (file == nullptr) {
        throwErrno();
    }
    std::setvbuf(file, nullptr, _IOLBF, BUFSIZ);
    return file;
}

} // namespace

LogFile::LogFile(std::string path) : path_(std::move(path)) {
    try {
        file_.reset(open(path_));
    } catch (const std::system_error& error) {
        throw outputFailure("the log '" + path_ + "'", error);
    }
}

void LogFile::write(std::string_view line) {
    if (std::fwrite(line.data(), 1, line.size(), file_.get()) != line.size() && error_ == 0) {
        error_ = errno;
    }
}

void LogFile::close() {
    if (std::fclose(file_.release()) != 0 && error_ == 0) {
        error_ = errno;
    }
    if (error_ != 0) {
        throw outputFailure("the log '" + path_ + "'", std::system_error(error_, std::generic_category()));
    }
}

LogWriter::LogWriter(const std::optional<std::string>& path, const LogFormat& format, const KelString& encoding)
    : format_(format), decoder_(encoding) {
    if (path && *path != "-") {
        file_.emplace(*path);
    }
}

void LogWriter::record(const KelLogEvent& event) {
    if (const auto level = static_cast<std::size_t>(event.getSeverityLevel()) - 1; level < counts_.size()) {
        ++counts_[level];
    }
    if (!leftOut_.empty() && event.getCode().view() == leftOut_) {
        return;
    }
    KelString text(event.getText());
    if (!event.getFurtherText().isEmpty()) {
        text.append(" ").append(event.getFurtherText().view());
    }
    const std::string line = format_.line(event, decoder_.toUtf8(text.view()));
    if (file_) {
        file_->write(line);
    } else {
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
}

void LogWriter::close() {
    if (file_) {
        file_->close();
    }
}

namespace {

int warningLevel() {
    static const int level = severityLevel("WARNING");
    return level;
}

} // namespace

WarningCount::WarningCount(KelLog& log, int reported) : log_(log), reported_(reported) {
    setMaximumLevel(std::max(reported, warningLevel()));
}

void WarningCount::record(const KelLogEvent& event) {
    count_ += event.getSeverityLevel() <= warningLevel() ? 1 : 0;
    if (event.getSeverityLevel() <= reported_) {
        log_.record(event);
    }
}

} // namespace petal
