#pragma once

#include "host/encoding/KelTextDecoder.h"
#include "host/log/KelLog.h"
#include "petal/ImportResult.h"
#include "petal/LogFile.h"
#include "petal/logFormats.h"

#include <optional>
#include <string>
#include <string_view>

namespace petal {

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

} // namespace petal
