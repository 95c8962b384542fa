#pragma once

#include "export/DrawnPositions.h"
#include "source/SourceMap.h"
#include "units/UnitTree.h"

class KelModel;

namespace petal {

/// The positions of the model's classes on its class diagrams, read from the files that the model comes from; `places`
/// are those of its objects. Reads the files once more, and takes time and memory proportional to them. Throws
/// `std::system_error` when a file cannot be read.
[[nodiscard]] exporter::DrawnPositions findPositions(const units::UnitTree& files, const KelModel& model,
                                                     const source::SourceMap& places);

} // namespace petal
