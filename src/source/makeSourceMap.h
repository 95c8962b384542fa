#pragma once

#include "source/SourceMap.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

class KelModel;

namespace source {

/// The places that the objects of a finished model come from. `trace` has been located. Reads the files of the tree
/// once more, and takes memory in proportion to the objects that the import made. Throws `std::system_error` when a
/// file cannot be read.
[[nodiscard]] SourceMap makeSourceMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model);

} // namespace source
