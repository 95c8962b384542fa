#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelBridgeSpecification;
class KelOptionList;

/// What every bridge offers to the host. The host gets the interface object from the bridge's factory function
/// and never deletes it. Calls are made by one thread at a time; an import refuses a second one by itself.
class KEL_API KelModelBridgeDllInterface {
public:
    KelModelBridgeDllInterface(const KelModelBridgeDllInterface&) = delete;
    KelModelBridgeDllInterface& operator=(const KelModelBridgeDllInterface&) = delete;

    /// Describes the bridge as it runs under `bridgeId`.
    virtual void getSpecification(const KelString& bridgeId, KelBridgeSpecification& specification) = 0;
    /// Replaces what `options` holds by the bridge's options with their defaults.
    virtual void getOptionList(KelOptionList& options) = 0;
    /// The name of the mapping specification that belongs to the bridge.
    virtual KelString getMappingSpecificationXmlFile() = 0;

protected:
    KelModelBridgeDllInterface() = default;
    ~KelModelBridgeDllInterface() = default;
};
