#pragma once

#include "host/bridge/KelBridgeSpecificationLiteral.h"

/// The specification literals of the bridges that the host knows.
struct KEL_API HOLST {
    static KelBridgeSpecificationLiteral BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT;
};
