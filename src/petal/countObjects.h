#pragma once

#include <cstdint>

class KelModel;

namespace petal {

/// How many objects the model holds, itself not counted.
[[nodiscard]] std::uint64_t countObjects(KelModel& model);

} // namespace petal
