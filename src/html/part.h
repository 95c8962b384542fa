#pragma once

#include "html/writeHtml.h"

namespace html {

/// The interface of the part (loading/part.h) that this room is.
struct Part {
    static constexpr const char* name = "html";

    decltype(&html::writeHtml) writeHtml;
    decltype(&html::writeIndex) writeIndex;
};

} // namespace html
