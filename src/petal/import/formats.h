#pragma once

#include "export/options.h"
#include "petal/Request.h"

namespace petal {

/// The format of a single model: the one asked for, else the one that the ending of the output's name stands for, else
/// "tree" on a terminal and "json" elsewhere.
[[nodiscard]] std::string formatFor(const ImportRequest& request);

/// The values of the options of the request's format, which must be chosen. Throws a `Failure` with the outcome
/// `wrongUsage` that lists the options when a setting is for none of them.
[[nodiscard]] exporter::OptionValues formatOptions(const ImportRequest& request);

} // namespace petal
