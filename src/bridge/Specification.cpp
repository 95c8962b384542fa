#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/bridge/HOLST.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/getBridgeSpecification.h"
#include "literals/QEV_RRSE.h"

namespace {

constexpr const char* versionText = "5.2.0 - Jun 12 2007 10:50:18";
constexpr const char* mappingSpecificationName = "KelIbmRationalRoseImport";

/// The bridge's own text of that identifier, or the identifier itself, marked as not found.
KelString describe(const KelString& descriptionId) {
    const KelTextLiteral* literal = QEV_RRSE::findTextLiteral(descriptionId);
    return literal != nullptr ? literal->getText() : KelString("*** ") + descriptionId;
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
