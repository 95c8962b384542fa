#pragma once

#include "host/text/KelString.h"

namespace rose {

/// What a C++ spelling such as char[20] says of the type to make for it.
struct CPlusPlusSpelling {
    KelString text;
    KelString logicalName; // the name of its base type, or the text itself
    KelString sqlType;     // its SQL data type, or "undefined"
    int length = 0;        // of an array
};

[[nodiscard]] CPlusPlusSpelling readSpelling(const KelString& text);

} // namespace rose
