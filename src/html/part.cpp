#include "html/part.h"

#include "loading/part.h"

const void* petalPart(const char* version) {
    static constexpr html::Part part{.writeHtml = html::writeHtml, .writeIndex = html::writeIndex};
    return loading::partFor(version, &part);
}
