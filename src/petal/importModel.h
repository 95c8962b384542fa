#pragma once

#include "petal/FileUses.h"
#include "petal/ImportResult.h"
#include "petal/Request.h"
#include "petal/units/ModelSource.h"

namespace petal {

/// What an import has from the command that it belongs to.
struct ImportContext {
    const FileUses& uses;        // of the whole command; the files of controlled units must not be among what it writes
    units::UnitLocator& locator; // finds them
    TreeTaker takeTree = {};     // hears of them; may be empty
};

/// Imports one file in this process and writes the model in the format that is chosen in the request. Called once in a
/// process: the bridge may end it, and the model stays in memory. Throws a `Failure`.
ImportResult importModel(const ImportRequest& request, const ImportContext& context);

} // namespace petal
