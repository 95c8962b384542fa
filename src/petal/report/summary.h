#pragma once

#include "petal/report/Report.h"

#include <string>
#include <vector>

namespace petal {

/// A table of the outcomes of the files for people. It contains no control characters except colours.
[[nodiscard]] std::string summary(const std::vector<FileReport>& files, bool withColours);

} // namespace petal
