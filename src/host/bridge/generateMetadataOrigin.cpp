#include "host/bridge/generateMetadataOrigin.h"

#include "host/bridge/KelBridgeSpecificationLiteral.h"
#include "host/model/KelMetadataOrigin.h"

#include <memory>

KelMetadataOrigin* generateMetadataOrigin(const KelBridgeSpecificationLiteral& bridge, const KelString& bridgeId) {
    auto origin = std::make_unique<KelMetadataOrigin>();
    origin->vendorName = bridge.getVendor_Name();
    origin->toolName = bridge.getTool_Name();
    origin->toolVersions = bridge.getTool_Versions();
    origin->toolWeb = bridge.getTool_Web();
    origin->methodologySummary = bridge.getMethodology_Summary();
    origin->bridgeId = bridgeId;
    return origin.release();
}
