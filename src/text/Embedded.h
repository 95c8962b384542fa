#pragma once

#include <span>
#include <string_view>

namespace text {

/// A file of the sources that the program holds, as `embed_texts` of cmake/embedTexts.cmake puts it there.
struct Embedded {
    std::string_view name; ///< of the file, without folder and ending
    std::string_view text; ///< its bytes, unchanged
    std::string_view hash; ///< their SHA-256, in base64
};

} // namespace text
