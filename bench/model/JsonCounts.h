#pragma once

#include "model/Counts.h"

#include <cstdio>

namespace bench {

/// Counts what the JSON form of a model holds, reading it to its end as a stream.
/// Throws std::runtime_error when it is no JSON.
Counts countJson(std::FILE* json);

} // namespace bench
