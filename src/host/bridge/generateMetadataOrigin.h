#pragma once

#include "host/KelApi.h"

class KelBridgeSpecificationLiteral;
class KelMetadataOrigin;
class KelString;

/// A new origin that describes the bridge, which the host runs under `bridgeId`. Its four source fields are empty. The
/// caller owns it until a model accepts it. May throw `std::bad_alloc`.
[[nodiscard]] KEL_API KelMetadataOrigin* generateMetadataOrigin(const KelBridgeSpecificationLiteral& bridge,
                                                                const KelString& bridgeId);
