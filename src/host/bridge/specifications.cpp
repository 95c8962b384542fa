// The descriptions of bridges and of their tools, and the origin that an import makes from them.
#include "host/bridge/HOLST.h"
#include "host/bridge/KelBridgeSpecification.h"
#include "host/bridge/KelBridgeSpecificationLiteral.h"
#include "host/bridge/KelImportBridge.h"
#include "host/bridge/generateMetadataOrigin.h"
#include "host/bridge/getBridgeSpecification.h"
#include "host/model/KelMetadataOrigin.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

KelBridgeSpecificationLiteral HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT(
    KelImportBridge::bridgeId, "IbmRationalRose40ImportDescription",
    {.vendorName = "IBM",
     .toolName = "Rational Rose",
     .toolVersions = "4.0",
     .toolWeb = "http://www.ibm.com/software/rational",
     .methodologySummary = "Object-oriented analysis and design: use case, class and interaction models in the Booch, "
                           "OMT and UML notations."});

namespace {

constexpr std::array knownBridges = {&HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT};

} // namespace

KelBridgeSpecificationLiteral* getBridgeSpecification(const KelString& bridgeId) {
    const auto found = std::find_if(knownBridges.begin(), knownBridges.end(),
                                    [&](const auto* bridge) { return bridge->getBridgeId() == bridgeId; });
    return found != knownBridges.end() ? *found : nullptr;
}

void KelBridgeSpecification::initialize(const KelString& toolWeb, const KelString& vendorName,
                                        const KelString& toolName, const KelString& toolVersions,
                                        const KelString& methodologySummary, const char* const* extraTexts,
                                        const KelString& version, const KelString& description, bool experimental,
                                        bool licensed) {
    KelBridgeSpecification filled;
    filled.toolWeb_ = toolWeb;
    filled.vendorName_ = vendorName;
    filled.toolName_ = toolName;
    filled.toolVersions_ = toolVersions;
    filled.methodologySummary_ = methodologySummary;
    for (const char* const* text = extraTexts; text != nullptr && *text != nullptr; ++text) {
        filled.extraTexts_.emplace_back(*text);
    }
    filled.version_ = version;
    filled.description_ = description;
    filled.experimental_ = experimental;
    filled.licensed_ = licensed;
    *this = std::move(filled);
}

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
