#include "petal/LogWriter.h"

#include <cstdio>

namespace petal {

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

} // namespace petal
