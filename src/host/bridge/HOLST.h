#pragma once

#include "host/bridge/KelBridgeSpecificationLiteral.h"

/// The specification literals of the bridges that the host knows: constants that live while the library is loaded.
/// `getBridgeSpecification` finds one by its identifier.
struct KEL_API HOLST {
    static KelBridgeSpecificationLiteral BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT;
};
