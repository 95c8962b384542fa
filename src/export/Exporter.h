#pragma once

#include "export/OutputFolder.h"
#include "export/options.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

class KelModel;

namespace ledger {
struct KeptLedger;
}

namespace layout {
class NotationTree;
}

namespace source {
class SourceMap;
}

namespace exporter {

class DrawnPositions;
class Omissions;

/// The files that a format consists of.
enum class Shape : std::uint8_t { nothing, oneFile };

/// Returns the quids of a model's objects, and their places if needed; null: not known. The first call may search the
/// files, and throws what that throws.
using FindSource = std::function<const source::SourceMap*()>;

/// Everything that a format is given to write a model. Owns nothing; lives during one call.
struct ExportContext {
    const KelModel& model;        ///< does not change meanwhile
    FindSource findSource = {};   ///< empty: not known
    const OptionValues& options;  ///< of the format's options
    OutputFolder& folder;         ///< opened by the format, completed by the caller
    Omissions& omissions;         ///< to which the format adds whatever of the model it has no place for
    std::string_view ending = {}; ///< of the output's name in lower case, with the dot; empty when it is not known
    const DrawnPositions* positions = nullptr;      ///< of classes on their class diagrams; null: not known
    const layout::NotationTree* notation = nullptr; ///< of the files that the model was read from; null: not known
    const ledger::KeptLedger* ledger = nullptr;     ///< what became of everything in the files; null: not known
    std::uint64_t objects = 0;                      ///< in the model, itself not counted; 0: not known

    [[nodiscard]] const source::SourceMap* getSource() const { return findSource ? findSource() : nullptr; }
};

/// A model of several, for the index of their outputs. It holds nothing that only the run that wrote an output knows:
/// the index is the same if that was an earlier one.
struct IndexedOutput {
    std::string file;       ///< as it was named; any bytes
    std::string output;     ///< the path of what was written; empty for nothing
    std::string link;       ///< that relative to the index, as a part of an address
    std::string_view state; ///< what became of it, for people: "imported", "failed"
    std::string text;       ///< why it failed; may be empty
};

/// A format in which models are written: a row of the table that the help, the manual, the completions, `petal
/// formats`, the fuzz targets and the tests go through.
struct Exporter {
    std::string_view format;
    std::string_view description; ///< half a sentence for people
    Shape shape;
    std::span<const std::string_view> endings; ///< of file names, with the dot; the first is the usual one
    std::span<const Option> options;
    /// Writes the model. Throws what the folder, its outputs and `FindSource` throw, and `std::bad_alloc`. Takes time
    /// and memory proportional to the model. Null for a format that writes nothing, not even an empty file.
    void (*write)(const ExportContext& context);
    /// Whether `ExportContext::findSource` may be called, which costs a search of the files. Null for never.
    bool (*needsSource)(const OptionValues& options) = nullptr;
    /// Whether it must have places besides quids, which costs reading the files once more. A format that needs them
    /// needs the source. Null for never.
    bool (*needsPlaces)(const OptionValues& options) = nullptr;
    /// The same of `ExportContext::positions`. A format that needs them needs places.
    bool (*needsPositions)(const OptionValues& options) = nullptr;
    /// Throws `WrongOption` for values that their options accept and the format does not. Called before an import. Null
    /// for a format that takes all.
    void (*check)(const OptionValues& options) = nullptr;
    /// The same of `ExportContext::notation` and `ledger`: of what is in the files besides the model. A format that
    /// needs them needs places.
    bool (*needsFiles)(const OptionValues& options) = nullptr;
    /// Writes the index of a folder of outputs, the file "index" with the first ending. Throws what the output throws.
    /// Null for a format without one.
    void (*writeIndex)(std::span<const IndexedOutput> models, text::Output& output) = nullptr;
};

} // namespace exporter
