#include "layout/markup.h"
#include "layout/write.h"

namespace layout {

DrawioWriter::DrawioWriter(Theme theme, text::BufferedOutput& output) : theme_(theme), output_(output) {
    output_.put("<mxfile>\n");
}

void DrawioWriter::write(const Scene& scene) {
    static_cast<void>(scene);
    static_cast<void>(theme_);
    ++pages_;
}

void DrawioWriter::end() {
    output_.put("</mxfile>\n");
}

} // namespace layout
