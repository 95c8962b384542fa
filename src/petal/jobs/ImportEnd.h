#pragma once

#include "petal/import/importModel.h"
#include "units/LostUnits.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// How many parts of models formats have left out, by format and kind.
struct OmissionCounts {
    struct Row {
        std::string format;
        std::string one; // "operation"
        std::string many;
        std::uint64_t count = 0;
    };
    std::vector<Row> rows; // in the order in which they were first added

    void add(const OmissionCounts& others);
    /// A line for each format: "uml: left out: 12 class diagrams, 1 friend flag".
    [[nodiscard]] std::vector<std::string> lines() const;
};

/// How an import ended.
struct ImportEnd {
    Outcome outcome = Outcome::success; // or `checkTripped`, when the model was written
    ImportResult result;                // nothing but zeros when it was not
    std::string text;                   // what went wrong, as in a `Failure`
    std::string advice;
    int exitStatus = 0;                     // unless 0, the status with which something ended the process of the import
    int signal = 0;                         // unless 0, the signal that ended it
    std::vector<units::ModelLosses> losses; // of each model whose units were looked for, whatever came of it
    OmissionCounts omissions;

    [[nodiscard]] bool isDone() const { return outcome == Outcome::success || outcome == Outcome::checkTripped; }
};

[[nodiscard]] ImportEnd endWith(const ImportResult& result);
/// What stands for the exception that an import ended with.
[[nodiscard]] ImportEnd endWith(const std::exception_ptr& failure);

/// The bytes in which an end, but for its losses and omissions, goes to another process of the same program; and the
/// losses of one model and the omissions of one format, which go before it.
[[nodiscard]] std::string encoded(const ImportEnd& end);
[[nodiscard]] std::string encoded(const units::ModelLosses& losses);
[[nodiscard]] std::string encoded(std::string_view format, const exporter::Omissions& omissions);

/// What is in such bytes, which may have been cut.
struct ImportMessage {
    std::optional<ImportEnd> end; // without the losses and omissions
    std::vector<units::ModelLosses> losses;
    OmissionCounts omissions;
};
[[nodiscard]] ImportMessage decoded(std::string_view bytes);

} // namespace petal
