#include "bridge/KelIbmRationalRose40ImportDllInterface.h"

#include "bridge/failures.h"
#include "host/bridge/HOLST.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/getBridgeSpecification.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "literals/QEV_RRSE.h"

namespace {

constexpr const char* versionText = "5.2.0 - Jun 12 2007 10:50:18";
constexpr const char* mappingSpecificationName = "KelIbmRationalRoseImport";

/// The bridge's own text of that identifier, or the identifier itself, marked as not found.
KelString describe(const KelString& descriptionId) {
    const KelTextLiteral* literal = QEV_RRSE::findTextLiteral(descriptionId);
    return literal != nullptr ? literal->getText() : KelString("*** ") + descriptionId;
}

/// The extensions of the files that the bridge reads.
const char* const BRDproductFileExtension[] = {"mdl", nullptr};

/// Appends the option to the list, which owns it from then on.
void append(KelOptionList& options, std::unique_ptr<KelOption> option) {
    if (options.getOptions().add(option.get(), true, nullptr)) {
        static_cast<void>(option.release());
    }
}

} // namespace

void KelIbmRationalRose40ImportDllInterface::getSpecification(const KelString& bridgeId,
                                                              KelBridgeSpecification& specification) {
    const KelBridgeSpecificationLiteral* found = getBridgeSpecification(bridgeId);
    const KelBridgeSpecificationLiteral& literal =
        found != nullptr ? *found : HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT;
    specification.initialize(literal.getTool_Web(), literal.getVendor_Name(), literal.getTool_Name(),
                             literal.getTool_Versions(), literal.getMethodology_Summary(), nullptr, versionText,
                             describe(literal.getInternalCode_DescriptionLiteralId()), false, false);
}

KelString KelIbmRationalRose40ImportDllInterface::getMappingSpecificationXmlFile() {
    return mappingSpecificationName;
}

void KelIbmRationalRose40ImportDllInterface::getOptionList(KelOptionList& options) {
    options.removeAll();
    append(options, QEV_RRSE::BP_FILE.generateOption(true, BRDproductFileExtension, "Default", true));
    append(options, QEV_RRSE::BP_SUPPORTED_TYPES.generateOption(false));
    append(options, QEV_RRSE::BP_ENCODING.generateOption(false));
}

KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface() {
    static KelIbmRationalRose40ImportDllInterface bridge;
    rose::failures(); // now: there may be no memory left when one is needed
    return &bridge;
}
