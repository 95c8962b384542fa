#pragma once

#include "host/KelApi.h"
#include "host/bridge/KelBridgeSpecificationLiteral.h"

/// The specification literal registered for that bridge identifier, or null. It lives as long as the host library.
[[nodiscard]] KEL_API KelBridgeSpecificationLiteral* getBridgeSpecification(const KelString& bridgeId);
