#include "host/bridge/getBridgeSpecification.h"

#include "host/bridge/HOLST.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array knownBridges = {&HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT};

} // namespace

KelBridgeSpecificationLiteral* getBridgeSpecification(const KelString& bridgeId) {
    const auto found = std::find_if(knownBridges.begin(), knownBridges.end(),
                                    [&](const auto* bridge) { return bridge->getBridgeId() == bridgeId; });
    return found != knownBridges.end() ? *found : nullptr;
}
