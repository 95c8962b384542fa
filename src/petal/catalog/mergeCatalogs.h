#pragma once

#include "petal/Request.h"
#include "petal/exitStatus.h"

namespace petal {

/// Brings a catalogue up to date with others, which together have its models: puts in those that are new or differ,
/// and drops those that are in none of them. The rows are those that one run over all files makes. The outcome is that
/// of such a run, too. Throws a `Failure`: also when two have different models of the same path.
[[nodiscard]] Outcome mergeCatalogs(const CatalogRequest& request);

} // namespace petal
