#pragma once

#include "layout/Scene.h"
#include "text/Output.h"

#include <span>

namespace layout {

enum class Theme : std::uint8_t {
    file,  ///< the colours of the file
    plain, ///< black on white
};

/// Writes a picture as SVG: one group for each view, which says what it is in `data-` attributes. There is nothing
/// active in it, and nothing that refers to anything else. The same scene gives the same bytes. Throws what the output
/// throws; time is proportional to the scene.
void writeSvg(const Scene& scene, Theme theme, text::BufferedOutput& output);

/// Writes a file for draw.io, a page for each scene, one scene at a time. Used once, by one thread; `end` is the last
/// call.
class DrawioWriter {
public:
    /// `output` must live as long.
    DrawioWriter(Theme theme, text::BufferedOutput& output);
    void write(const Scene& scene);
    void end();

private:
    Theme theme_;
    text::BufferedOutput& output_;
    std::size_t pages_ = 0;
};

} // namespace layout
