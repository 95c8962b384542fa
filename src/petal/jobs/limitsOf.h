#pragma once

#include "petal/Request.h"
#include "petal/jobs/Limits.h"

namespace petal {

[[nodiscard]] inline Limits limitsOf(const JobsRequest& jobs) {
    Limits limits{.time = std::nullopt, .memory = jobs.maxMemory};
    if (jobs.timeout) {
        limits.time = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(*jobs.timeout));
    }
    return limits;
}

} // namespace petal
