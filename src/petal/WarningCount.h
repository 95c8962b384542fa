#pragma once

#include "host/log/KelLog.h"

#include <cstdint>

namespace petal {

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
