#pragma once

#include "host/KelApi.h"

class KelBridgeSpecificationLiteral;
class KelMetadataOrigin;
class KelString;

/// A new origin that describes the bridge, run by the host under `bridgeId`; where the contents come from is left
/// empty. The caller owns it until a model does.
[[nodiscard]] KEL_API KelMetadataOrigin* generateMetadataOrigin(const KelBridgeSpecificationLiteral& bridge,
                                                                const KelString& bridgeId);
