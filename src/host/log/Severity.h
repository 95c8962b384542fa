#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// A severity has a word and a level: "FATAL" 1, "ERROR" 2, "WARNING" 3, "STATUS" 4, "DEBUG" 5. Higher levels mean more
/// detail. Both functions may be called by any number of threads and do not throw.

/// The level of a severity word, compared byte for byte; 0 for any other text.
[[nodiscard]] KEL_API int severityLevel(const KelString& word);
/// The word of a level, a constant; null for any other number.
[[nodiscard]] KEL_API const char* severityWord(int level);
