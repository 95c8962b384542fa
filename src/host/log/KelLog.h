#pragma once

#include "host/KelApi.h"
#include "host/log/KelLogEvent.h"

#include <limits>

/// The callback by which an import reports its progress, warnings and errors. The host derives a class, and owns the
/// log.
///
/// The import calls it on its own thread. An exception that `record` throws ends the import, as
/// `KelModelBridgeImportDllInterface::run` describes.
class KEL_API KelLog {
public:
    KelLog() = default;
    KelLog(const KelLog&) = delete;
    KelLog& operator=(const KelLog&) = delete;
    virtual ~KelLog();

    /// Receives one event, which lives only during the call. Called for accepted levels, in the order of events.
    virtual void record(const KelLogEvent& event) = 0;

    /// The highest severity level (Severity.h) that this log accepts; initially all levels. Bridges do not compose the
    /// text of an event that is not accepted, so a low level saves time.
    [[nodiscard]] int getMaximumLevel() const { return maximumLevel_; }
    [[nodiscard]] bool accepts(int severityLevel) const { return severityLevel <= maximumLevel_; }
    void setMaximumLevel(int severityLevel) { maximumLevel_ = severityLevel; }

private:
    int maximumLevel_ = std::numeric_limits<int>::max();
};
