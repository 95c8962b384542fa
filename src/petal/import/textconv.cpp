#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/jobs/importOne.h"
#include "petal/units/unitOptions.h"

namespace petal {

void convertToText(const TextconvRequest& request) {
    ImportRequest import;
    import.file = request.file;
    import.destinations = {{.format = "tree", .path = std::nullopt }};
    import.units.mode = "skip"; // they are files that git compares by themselves
    import.logLevel = "ERROR";  // git runs this for each version of a file
    import.namesFile = false;   // git may give a version as a temporary file
    import.isSummarised = false;
    import.isCounted = false;
    FileUses uses;
    uses.reads(request.file);
    units::UnitLocator locator = makeUnitLocator(import.units);
    const ImportEnd end = importHere(import, {uses, locator});
    if (!end.isDone()) {
        throw Failure(end.outcome, end.text, end.advice);
    }
}

} // namespace petal
