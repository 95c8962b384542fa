#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// Severities have a word and a level: "FATAL" 1, "ERROR" 2, "WARNING" 3, "STATUS" 4, "DEBUG" 5. The higher the
/// level, the more detail it stands for.

/// The level of a severity word, compared byte for byte; 0 for any other text.
[[nodiscard]] KEL_API int severityLevel(const KelString& word);
/// The word of a level, alive as long as the program; null for any other number.
[[nodiscard]] KEL_API const char* severityWord(int level);
