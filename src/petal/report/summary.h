#pragma once

#include "petal/report/Report.h"

#include <string>
#include <vector>

namespace petal {

/// A table for people of what became of the files, with colours when wanted.
[[nodiscard]] std::string summary(const std::vector<FileReport>& files, bool withColours);

} // namespace petal
