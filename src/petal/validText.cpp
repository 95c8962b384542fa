#include "petal/validText.h"

#include "export/printableText.h"
#include "export/utf8.h"

namespace petal {

std::string validText(std::string_view bytes) {
    return exporter::isValidUtf8(bytes) ? std::string(bytes) : exporter::printableText(bytes);
}

} // namespace petal
