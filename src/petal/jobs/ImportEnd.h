#pragma once

#include "petal/import/importModel.h"
#include "units/LostUnits.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace petal {

/// How an import ended.
struct ImportEnd {
    Outcome outcome = Outcome::success; // or `checkTripped`, when the model was written
    ImportResult result;                // nothing but zeros when it was not
    std::string text;                   // what went wrong, as in a `Failure`
    std::string advice;
    int exitStatus = 0;                     // unless 0, the status with which something ended the process of the import
    int signal = 0;                         // unless 0, the signal that ended it
    std::vector<units::ModelLosses> losses; // of each model whose units were looked for, whatever came of it

    [[nodiscard]] bool isDone() const { return outcome == Outcome::success || outcome == Outcome::checkTripped; }
};

[[nodiscard]] ImportEnd endWith(const ImportResult& result);
/// What stands for the exception that an import ended with.
[[nodiscard]] ImportEnd endWith(const std::exception_ptr& failure);

/// The bytes in which an end, but for its losses, goes to another process of the same program; and the losses of one
/// model, which go ahead of it.
[[nodiscard]] std::string encoded(const ImportEnd& end);
[[nodiscard]] std::string encoded(const units::ModelLosses& losses);

/// What is in such bytes, which may have been cut.
struct ImportMessage {
    std::optional<ImportEnd> end; // without the losses
    std::vector<units::ModelLosses> losses;
};
[[nodiscard]] ImportMessage decoded(std::string_view bytes);

} // namespace petal
