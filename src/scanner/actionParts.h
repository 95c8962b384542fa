#pragma once

#include "builder/Trace.h"
#include "scanner/Rule.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace rose {

/// Hands the value to a builder operation, if there is one.
inline void give(void (*operation)(char*), const Reading& reading) {
    if (reading.value != nullptr) {
        operation(reading.value);
    }
}

/// Whether the matched line says TRUE.
inline bool saysTrue(const Reading& reading) {
    return std::strstr(reading.text, "TRUE") != nullptr;
}

/// To tell the observer: the value counts as TRUE although the matched line does not say `word`.
inline KelImportReason unlessSaid(const Reading& reading, const char* word) {
    return !trace::isOn() || std::strstr(reading.text, word) != nullptr ? KelImportReason::none
                                                                        : KelImportReason::takenAsTrue;
}

/// The decimal number that `text` starts with, cut to 32 bits; 0 without digits.
inline std::int32_t decimal(const char* text) {
    return static_cast<std::int32_t>(std::strtol(text, nullptr, 10));
}

/// To tell the observer: the text is not just such a number.
inline KelImportReason decimalFault(const char* text) {
    return !trace::isOn() || std::to_string(decimal(text)) == text ? KelImportReason::none
                                                                   : KelImportReason::valueUnknown;
}

} // namespace rose
