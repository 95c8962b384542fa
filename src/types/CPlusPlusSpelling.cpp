#include "types/CPlusPlusSpelling.h"

#include "types/RoseTypeTables.h"

#include <cctype>
#include <cstdlib>

namespace rose {

namespace {

/// The number directly behind the first "[", or 0.
int arrayLength(std::string_view text) {
    const std::size_t bracket = text.find('[');
    if (bracket == std::string_view::npos || bracket + 1 == text.size() ||
        std::isdigit(static_cast<unsigned char>(text[bracket + 1])) == 0) {
        return 0;
    }
    return static_cast<int>(std::strtol(text.data() + bracket + 1, nullptr, 10));
}

} // namespace

CPlusPlusSpelling readSpelling(const KelString& text) {
    const std::string_view spelling = text.view();
    const char* logicalName = findRoseType(RosePhysicalToLogical, spelling);
    const char* sqlType = findRoseType(RosePhysicalToPhysical, spelling.starts_with("char") ? "char" : spelling);
    CPlusPlusSpelling read{text, logicalName != nullptr ? KelString(logicalName) : text,
                           sqlType != nullptr ? sqlType : "undefined", 0};
    if (spelling.find_first_of("*[") != std::string_view::npos) {
        if (read.sqlType == "SQL_CHAR") {
            read.sqlType = "SQL_BINARY";
        }
        read.length = arrayLength(spelling);
    }
    return read;
}

} // namespace rose
