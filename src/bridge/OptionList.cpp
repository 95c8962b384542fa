#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "literals/QEV_RRSE.h"

namespace {

/// The extensions of the files that the bridge reads.
const char* const BRDproductFileExtension[] = {"mdl", nullptr};

/// Appends the option to the list, which owns it from then on.
void append(KelOptionList& options, std::unique_ptr<KelOption> option) {
    if (options.getOptions().add(option.get(), true, nullptr)) {
        static_cast<void>(option.release());
    }
}

} // namespace

void KelIbmRationalRose40ImportDllInterface::getOptionList(KelOptionList& options) {
    options.removeAll();
    append(options, QEV_RRSE::BP_FILE.generateOption(true, BRDproductFileExtension, "Default", true));
    append(options, QEV_RRSE::BP_SUPPORTED_TYPES.generateOption(false));
    append(options, QEV_RRSE::BP_ENCODING.generateOption(false));
}
