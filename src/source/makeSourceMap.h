#pragma once

#include "source/SourceMap.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

class KelModel;

namespace source {

/// Makes the map of a finished model. Requires that `trace` has been located. Throws `std::system_error` when a file
/// cannot be read. Reads the files of the tree once more; memory is proportional to the number of objects that the
/// import made.
[[nodiscard]] SourceMap makeSourceMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model);

/// The files of a tree as the shell would name them.
[[nodiscard]] std::vector<std::string> pathsOf(const units::UnitTree& tree);

} // namespace source
