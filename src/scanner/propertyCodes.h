#pragma once

#include "host/bridge/KelImportObserver.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace rose {

/// The visibility of attributes and operations whose text is none of those with a code.
inline constexpr std::int32_t otherVisibility = 3;

/// The code of an export control: 0 "Public", 1 "Protected", 2 "Private"; none for any other text.
std::optional<std::int32_t> visibilityCode(std::string_view text);

/// The code of a containment: 0 "By Value", 1 "By Reference", 2 any other text.
std::int32_t containmentCode(std::string_view text);

/// To tell the observer: `valueUnknown` for a text that is none of those that files have.
KelImportReason visibilityFault(std::string_view text);
KelImportReason containmentFault(std::string_view text);

} // namespace rose
