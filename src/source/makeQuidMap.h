#pragma once

#include "source/SourceMap.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

class KelModel;

namespace source {

/// Makes a map that has the quids of `makeSourceMap`, and no more: an object is in it exactly if it has a quid there;
/// `file` and `quid` are set, and the line is 0. Requires that `trace` has been located. Throws `std::system_error`
/// when a file cannot be read.
///
/// Searches the files for quids and looks only at the text around them, in a small part of the time that reading takes.
/// Where that does not show beyond doubt which object a quid belongs to, such as in damaged files, all files are read
/// as for `makeSourceMap`. Memory is proportional to the number of objects that have quids.
[[nodiscard]] SourceMap makeQuidMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model);

} // namespace source
