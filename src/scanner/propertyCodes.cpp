#include "scanner/propertyCodes.h"

#include <algorithm>
#include <array>

namespace rose {

namespace {

constexpr std::array<std::string_view, 3> visibilities{"Public", "Protected", "Private"};
constexpr std::array<std::string_view, 2> containments{"By Value", "By Reference"};

/// The index of `text` in `texts`, or their count.
std::int32_t indexOf(const auto& texts, std::string_view text) {
    return static_cast<std::int32_t>(std::find(texts.begin(), texts.end(), text) - texts.begin());
}

} // namespace

std::optional<std::int32_t> visibilityCode(std::string_view text) {
    const std::int32_t code = indexOf(visibilities, text);
    return code < static_cast<std::int32_t>(visibilities.size()) ? std::optional(code) : std::nullopt;
}

std::int32_t containmentCode(std::string_view text) {
    return indexOf(containments, text);
}

KelImportReason visibilityFault(std::string_view text) {
    const bool isKnown = visibilityCode(text).has_value() || text == "Implementation";
    return isKnown ? KelImportReason::none : KelImportReason::valueUnknown;
}

KelImportReason containmentFault(std::string_view text) {
    const bool isKnown = indexOf(containments, text) < static_cast<std::int32_t>(containments.size());
    return isKnown || text == "Unspecified" ? KelImportReason::none : KelImportReason::valueUnknown;
}

} // namespace rose
