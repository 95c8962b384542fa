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

/// A log that goes to a file. Each line is there at once, whatever becomes of the process.
class LogFile {
public:
    /// Empties the file, unless it is open already under a path such as "/dev/fd/3". Throws a `Failure` with the
    /// outcome `outputFailed` when it cannot be opened.
    explicit LogFile(std::string path);

    /// Writes a line, its end included. A failure is kept for `close`.
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

/// Writes the events of an import to standard error or to a file, each as soon as it is recorded: a bridge may end
/// the process.
class LogWriter final : public KelLog {
public:
    /// No path, or "-", stands for standard error; otherwise a `LogFile`, which may throw. `encoding` is the one that
    /// the events quote names in.
    LogWriter(const std::optional<std::string>& path, const LogFormat& format, const KelString& encoding);

    /// Events of that code are from now on counted only.
    void leaveOut(std::string_view code) { leftOut_ = code; }
    /// A failure to write is kept for `close`: it must not end the import.
    void record(const KelLogEvent& event) override;
    /// Throws a `Failure` with the outcome `outputFailed` when a part of the log could not be written to its file.
    void close();
    /// How many events of each severity were recorded.
    [[nodiscard]] const EventCounts& getCounts() const { return counts_; }

private:
    std::optional<LogFile> file_; // none for standard error
    const LogFormat& format_;
    KelTextDecoder decoder_;
    std::string leftOut_;
    EventCounts counts_{};
};

/// Counts the warnings and what is more severe, and hands on to another log what that is to report.
class WarningCount final : public KelLog {
public:
    /// `reported` is the highest severity level to hand on. `log` must live as long.
    WarningCount(KelLog& log, int reported);

    void record(const KelLogEvent& event) override;
    [[nodiscard]] std::uint64_t getCount() const { return count_; }

private:
    KelLog& log_;
    int reported_;
    std::uint64_t count_ = 0;
};

} // namespace petal
