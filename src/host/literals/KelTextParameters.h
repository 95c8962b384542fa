#pragma once

#include "host/text/KelString.h"

#include <optional>
#include <vector>

/// The workspace in which the values for one use of a parameterised text are gathered; value i stands for "{i}".
/// A value that was not set leaves its place in the text as written.
using KelTextParameters = std::vector<std::optional<KelString>>;
