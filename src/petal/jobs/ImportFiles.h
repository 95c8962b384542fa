#pragma once

#include "petal/TemporaryFile.h"

#include <array>
#include <memory>
#include <string>

namespace petal {

/// Where what an import makes is to be; empty where it is not to be kept.
struct ImportPaths {
    std::string model;
    std::string ledger;
};

/// The files that an import in a process of its own writes for its parent to keep; null where it has none.
struct ImportFiles {
    std::unique_ptr<TemporaryFile> model;
    std::unique_ptr<TemporaryFile> ledger;

    /// In the order in which they take their places: where there is a ledger, so is its model.
    [[nodiscard]] std::array<TemporaryFile*, 2> inOrder() const { return {model.get(), ledger.get()}; }
};

} // namespace petal
