#pragma once

#include "petal/jobs/ProcessPool.h"
#include "petal/jobs/Sources.h"
#include "units/LostUnits.h"

#include <map>
#include <span>
#include <vector>

namespace petal {

/// Finds the lost units of many models without importing them, in child processes that read up to 32 models each. If a
/// child fails, a new one continues with the model at which it failed or, if that was the child's first model, with the
/// next one. Used by one thread.
class UnitSurvey {
public:
    /// All but the request must live as long.
    UnitSurvey(std::span<const Source> sources, ImportRequest request, const FileUses& uses,
               units::UnitLocator& locator, const JobsRequest& jobs, const StopSignals& signals);

    /// Returns the lost units: the first call of all models, each later one of those that lost units in the call
    /// before. Throws `Stopped`, and `std::system_error` when no process can be started.
    [[nodiscard]] units::LostUnits survey();

private:
    using Numbers = std::span<const std::size_t>; // of sources

    [[nodiscard]] std::vector<Numbers> shared() const;
    [[nodiscard]] ImportTask taskFor(Numbers numbers) const;

    std::span<const Source> sources_;
    ImportRequest request_;
    const FileUses& uses_;
    units::UnitLocator& locator_;
    const JobsRequest& jobs_;
    const StopSignals& signals_;
    std::vector<std::size_t> numbers_; // of the sources to look at
};

} // namespace petal
