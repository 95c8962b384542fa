#pragma once

#include "support/ImportedModel.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// What a fuzzer's bytes mean as an import: the first one chooses the target system (bit 0), whether a header is put
/// in front of the rest (bit 1 clear) and the encoding (the other bits); the rest is the file.
class ImportInput {
public:
    ImportInput(const std::uint8_t* bytes, std::size_t size);

    /// Imports the file. Whatever it holds, the import ends as an import may end; see `endFault`.
    [[nodiscard]] ImportedModel import() const;

private:
    ImportChoices choices_;
    std::string file_;
};

/// What is wrong with the end of an import, which `failure` tells unless it is empty: an error that the bridge did not
/// expect, a model that a failed import leaves, a repository that is not sound. Empty when nothing is.
[[nodiscard]] std::string endFault(const std::string& failure, KelModel& model);

/// Empties a model and returns what stays in it against the rules; empty for nothing.
[[nodiscard]] std::string emptyingFault(KelModel& model);

} // namespace fuzz
