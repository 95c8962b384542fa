#include "petal/WarningCount.h"

#include "host/log/Severity.h"

#include <algorithm>

namespace petal {

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
