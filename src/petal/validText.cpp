#include "petal/validText.h"

#include "text/printableText.h"
#include "text/utf8.h"

namespace petal {

std::string validText(std::string_view bytes) {
    return text::isValidUtf8(bytes) ? std::string(bytes) : text::printableText(bytes);
}

} // namespace petal
