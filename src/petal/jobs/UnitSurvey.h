#pragma once

#include "petal/jobs/ProcessPool.h"
#include "petal/jobs/Sources.h"
#include "units/LostUnits.h"

#include <map>
#include <span>
#include <vector>

namespace petal {

/// Looks for the units of many models without importing them, in processes that take up to 32 models each. A process
/// that fails costs the model at which it did: the others are given to another one.
class UnitSurvey {
public:
    /// All but the request must live as long.
    UnitSurvey(std::span<const Source> sources, ImportRequest request, const FileUses& uses,
               units::UnitLocator& locator, const JobsRequest& jobs, const StopSignals& signals);

    /// What is lost of the models: the first time of all of them, from then on of those of which some was lost the
    /// time before. Throws `Stopped`, and `std::system_error` when no process can be made.
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
