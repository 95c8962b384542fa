#pragma once

#include "host/log/KelLog.h"
#include "petal/LogText.h"
#include "petal/logFormats.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace petal {

/// Writes the events of an import to standard error or to a file, each as soon as it is recorded: a bridge may end
/// the process.
class LogWriter final : public KelLog {
public:
    /// No path, or "-", stands for standard error; a file is emptied. `encoding` is the one that the events quote
    /// names in. Throws a `Failure` with the outcome `outputFailed` when the file cannot be opened.
    LogWriter(const std::optional<std::string>& path, const LogFormat& format, const KelString& encoding);
    ~LogWriter() override;

    /// A failure to write is kept for `close`: it must not end the import.
    void record(const KelLogEvent& event) override;
    /// Throws a `Failure` with the outcome `outputFailed` when a part of the log could not be written to its file.
    void close();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::unique_ptr<std::FILE, Closer> file_; // null for standard error
    int error_ = 0;                           // the first failure, as in errno
    const LogFormat& format_;
    LogText logText_;
};

} // namespace petal
