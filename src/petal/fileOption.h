#pragma once

#include "host/text/KelString.h"

#include <string>

namespace petal {

/// The text to give as an option of an import, whose texts are UTF-8, so that the bridge opens the file with the
/// very bytes of `path`. May have to put the process into a UTF-8 locale. Throws a `Failure` with the outcome
/// `importFailed` when there is no such text.
[[nodiscard]] KelString fileOption(const std::string& path);

} // namespace petal
