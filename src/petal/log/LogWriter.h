#pragma once

#include "host/encoding/KelTextDecoder.h"
#include "host/log/KelLog.h"
#include "petal/import/importModel.h"
#include "petal/log/logFormats.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace petal {

/// A log file. Each line is written at once, so that the log is complete if the process crashes. Used by one thread.
class LogFile {
public:
    /// Creates or empties the file; a path such as "/dev/fd/3" means an open descriptor, which is duplicated. Throws a
    /// `Failure` with the outcome `outputFailed` when the file cannot be opened.
    explicit LogFile(std::string path);

    /// Writes a line, which must include its line end. `close` reports a failure.
    void write(std::string_view line);
    /// Throws a `Failure` with the outcome `outputFailed` when a line could not be written.
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::unique_ptr<std::FILE, Closer> file_;
    int error_ = 0; // the first failure, as in errno
};

/// Writes the events of an import to standard error or to a file. Each is written when it is recorded, because a bridge
/// may end the process.
class LogWriter final : public KelLog {
public:
    /// Without a path, or with "-", it writes to standard error, otherwise to a `LogFile`, which may throw. `encoding`
    /// is the one of names in events. `format` must live as long.
    LogWriter(const std::optional<std::string>& path, const LogFormat& format, const KelString& encoding);

    /// Later events with that code are only counted, not written.
    void leaveOut(std::string_view code) { leftOut_ = code; }
    /// `close` reports a failure to write: it must not end the import.
    void record(const KelLogEvent& event) override;
    /// Throws a `Failure` with the outcome `outputFailed` when a part of the log could not be written to its file.
    void close();
    /// The number of recorded events by severity.
    [[nodiscard]] const EventCounts& getCounts() const { return counts_; }

private:
    std::optional<LogFile> file_; // empty for standard error
    const LogFormat& format_;
    KelTextDecoder decoder_;
    std::string leftOut_;
    EventCounts counts_{};
};

/// Counts events that are warnings or more severe, and passes events on to another log.
class WarningCount final : public KelLog {
public:
    /// `reported` is the highest severity level to pass on. `log` must live as long.
    WarningCount(KelLog& log, int reported);

    void record(const KelLogEvent& event) override;
    [[nodiscard]] std::uint64_t getCount() const { return count_; }

private:
    KelLog& log_;
    int reported_;
    std::uint64_t count_ = 0;
};

} // namespace petal
