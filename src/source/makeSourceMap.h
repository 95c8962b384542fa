#pragma once

#include "notation/Event.h"
#include "notation/Line.h"
#include "notation/Listener.h"
#include "source/SourceMap.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

#include <memory>

class KelModel;

namespace source {

class TracedText;

/// Makes the map of a finished model from a reading that somebody else drives. Used by one thread.
class SourceMapMaker final : public notation::Listener {
public:
    /// `text` has not been read yet. All references must live as long; `text` until the end of the reading.
    SourceMapMaker(const units::UnitTree& tree, const Trace& trace, const KelModel& model, const TracedText& text);
    ~SourceMapMaker() override;

    /// To be called with every event or line of the text, while it is at it.
    void take(const notation::Event& event) override;
    void take(const notation::Line& line) override;
    /// The map. Called once, at the end of the text.
    [[nodiscard]] SourceMap finish();

private:
    class MapMaker;
    std::unique_ptr<MapMaker> maker_;
};

/// Makes the map of a finished model. Requires that `trace` has been located. Throws `std::system_error` when a file
/// cannot be read. Reads the files of the tree once more; memory is proportional to the number of objects that the
/// import made.
[[nodiscard]] SourceMap makeSourceMap(const units::UnitTree& tree, const Trace& trace, const KelModel& model);

/// The files of a tree as the shell would name them.
[[nodiscard]] std::vector<std::string> pathsOf(const units::UnitTree& tree);

} // namespace source
