#include "host/literals/messageCode.h"

#include <string_view>

KelString fullMessageCode(const KelString& prefix, const KelString& severity, const KelString& code) {
    constexpr std::string_view blankCode = "0000";
    const std::string_view digits = code.view();
    KelString full(prefix);
    full.append("_");
    full.append(severity.view().substr(0, 1));
    if (digits.size() < blankCode.size()) {
        full.append(blankCode.substr(digits.size()));
    }
    full.append(digits);
    return full;
}
