#include "host/bridge/HOLST.h"

#include "host/bridge/KelImportBridge.h"

KelBridgeSpecificationLiteral HOLST::BRIDGE_SPEC_IBMRATIONALROSE40_IMPORT(
    KelImportBridge::bridgeId, "IbmRationalRose40ImportDescription",
    {.vendorName = "IBM",
     .toolName = "Rational Rose",
     .toolVersions = "4.0",
     .toolWeb = "http://www.ibm.com/software/rational",
     .methodologySummary = "Object-oriented analysis and design: use case, class and interaction models in the Booch, "
                           "OMT and UML notations."});
