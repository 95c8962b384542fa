#pragma once

#include "host/KelApi.h"
#include "host/log/KelLogEvent.h"

#include <limits>

/// Where an import reports its progress and what it noticed. The host derives its own log and owns it.
class KEL_API KelLog {
public:
    KelLog() = default;
    KelLog(const KelLog&) = delete;
    KelLog& operator=(const KelLog&) = delete;
    virtual ~KelLog();

    /// Takes one event, which lives only during the call. Called for accepted levels, in the order of events.
    virtual void record(const KelLogEvent& event) = 0;

    /// The highest severity level this log listens to; at first every level. It lets a reporter leave out
    /// building texts that nobody reads.
    [[nodiscard]] int getMaximumLevel() const { return maximumLevel_; }
    [[nodiscard]] bool accepts(int severityLevel) const { return severityLevel <= maximumLevel_; }
    void setMaximumLevel(int severityLevel) { maximumLevel_ = severityLevel; }

private:
    int maximumLevel_ = std::numeric_limits<int>::max();
};
