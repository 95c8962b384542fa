#pragma once

#include "scanner/Rule.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

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

/// The decimal number that `text` starts with, cut to 32 bits; 0 without digits.
inline std::int32_t decimal(const char* text) {
    return static_cast<std::int32_t>(std::strtol(text, nullptr, 10));
}

} // namespace rose
