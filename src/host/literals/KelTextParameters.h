#pragma once

#include "host/text/KelString.h"

#include <optional>
#include <vector>

/// The values for one use of a parameterised text: element i replaces "{i}". A placeholder without a value remains in
/// the text.
using KelTextParameters = std::vector<std::optional<KelString>>;
