#pragma once

#include "petal/import/importModel.h"
#include "units/LostUnits.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// The numbers of parts of models that formats omitted, by format and kind.
struct OmissionCounts {
    struct Row {
        std::string format;
        std::string one; // "operation"
        std::string many;
        std::uint64_t count = 0;
    };
    std::vector<Row> rows; // in the order of their first addition

    void add(const OmissionCounts& others);
    /// A line for each format: "uml: left out: 12 class diagrams, 1 friend flag".
    [[nodiscard]] std::vector<std::string> lines() const;
};

/// The result of an import in another process, or of a failed one.
struct ImportEnd {
    Outcome outcome = Outcome::success; // this or `checkTripped` if the model was written
    ImportResult result;                // all zero if it was not
    std::string text;                   // the failure, as in a `Failure`
    std::string advice;
    int exitStatus = 0;                     // unless 0, the status with which the bridge ended the process
    int signal = 0;                         // unless 0, the signal that ended the process
    std::vector<units::ModelLosses> losses; // of each model whose units were searched, also if the import failed
    OmissionCounts omissions;
    std::vector<std::filesystem::path> listed; // the folders that had to be listed to find units

    [[nodiscard]] bool isDone() const { return outcome == Outcome::success || outcome == Outcome::checkTripped; }
};

[[nodiscard]] ImportEnd endWith(const ImportResult& result);
/// The end for an exception that an import threw.
[[nodiscard]] ImportEnd endWith(const std::exception_ptr& failure);

/// Encode parts of a message to another process of the same program: the losses of a model, the omissions of a format
/// and, last, the end without losses and omissions. Each part begins with its length.
[[nodiscard]] std::string encoded(const ImportEnd& end);
[[nodiscard]] std::string encoded(const units::ModelLosses& losses);
[[nodiscard]] std::string encoded(std::string_view format, const exporter::Omissions& omissions);

/// The parts of such a message.
struct ImportMessage {
    std::optional<ImportEnd> end; // without the losses and omissions
    std::vector<units::ModelLosses> losses;
    OmissionCounts omissions;
};
/// Moves the first part of `bytes` to `message`. Returns false if `bytes` has no complete part.
bool takePart(std::string_view& bytes, ImportMessage& message);

} // namespace petal
