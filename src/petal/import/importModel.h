#pragma once

#include "petal/Request.h"
#include "petal/exitStatus.h"
#include "petal/import/ModelSource.h"
#include "petal/output/FileUses.h"
#include "source/Trace.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <type_traits>

class KelModel;
class KelString;

namespace exporter {
class Omissions;
}

namespace petal {

constexpr std::size_t severityCount = 5;
/// The number of log events of the severity levels 1, 2, ... It is 0 for levels that the log does not accept.
using EventCounts = std::array<std::uint64_t, severityCount>;

/// The counts of an import whose model was written.
struct ImportResult {
    Outcome outcome = Outcome::success; // or `checkTripped`
    std::uint64_t objects = 0;          // in the model, itself not counted
    EventCounts events{};
    std::uint64_t dropped = 0; // objects of the file that the model does not have; 0 when no ledger was made
    std::uint64_t losses = 0;  // of the ledger; likewise
    std::uint64_t unitsFound = 0;
    std::uint64_t unitsMissing = 0;
    std::uint64_t omitted = 0; // of the model, from what was written, all formats together
};
static_assert(std::is_trivially_copyable_v<ImportResult>, "goes from process to process as it is");

/// The number of objects in the model, without the model itself. Takes time proportional to it.
[[nodiscard]] std::uint64_t countObjects(KelModel& model);

/// Called with what a format has left out of the model, if anything, once it is written.
using OmissionTaker = std::function<void(std::string_view format, const exporter::Omissions& omissions)>;

/// A finished import. Owns nothing; lives during one call.
struct FinishedImport {
    const KelModel& model;
    const ModelSource& source;
    const source::Trace& trace; ///< located
    const KelString& encoding;  ///< of the files' texts, as given to the bridge
};
using ModelTaker = std::function<void(const FinishedImport& import)>;

/// The parts of an import that its command shares with other imports.
struct ImportContext {
    const FileUses& uses;        // of the whole command; the files of controlled units must not be among what it writes
    units::UnitLocator& locator; // finds them
    TreeTaker takeTree = {};     // hears of them; may be empty
    OmissionTaker takeOmissions = {}; // may be empty
    ModelTaker takeModel = {};        // likewise; called before the model is written. Not for files that are read once
    source::Steps steps = source::Steps::all; // those that `takeModel` needs
    bool isLast = true;                       // no other import follows in this process
};

/// Imports one file in this process and writes the model to the destinations of the request. The bridge may end the
/// process. After the last import the model stays in memory. Throws a `Failure`.
ImportResult importModel(const ImportRequest& request, const ImportContext& context);

} // namespace petal
