#pragma once

#include "host/KelApi.h"
#include "host/bridge/KelBridgeSpecificationLiteral.h"

/// The specification literal with that bridge identifier, or null. It lives while the library is loaded. Any number of
/// threads may call this; it does not throw.
[[nodiscard]] KEL_API KelBridgeSpecificationLiteral* getBridgeSpecification(const KelString& bridgeId);
