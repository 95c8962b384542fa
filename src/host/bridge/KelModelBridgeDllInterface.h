#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelBridgeSpecification;
class KelOptionList;

/// The interface of every bridge to the host.
///
/// The bridge owns the object; the host gets it from the bridge's factory and never deletes it. One thread at a time
/// calls its functions, all of which may throw `std::bad_alloc`; a second import is refused by the bridge itself.
class KEL_API KelModelBridgeDllInterface {
public:
    KelModelBridgeDllInterface(const KelModelBridgeDllInterface&) = delete;
    KelModelBridgeDllInterface& operator=(const KelModelBridgeDllInterface&) = delete;

    /// Replaces the contents of `specification` by the description of the bridge that runs under `bridgeId`.
    virtual void getSpecification(const KelString& bridgeId, KelBridgeSpecification& specification) = 0;
    /// Replaces the contents of `options` by the bridge's options with their defaults.
    virtual void getOptionList(KelOptionList& options) = 0;
    /// The file name of the mapping specification that belongs to the bridge.
    virtual KelString getMappingSpecificationXmlFile() = 0;

protected:
    KelModelBridgeDllInterface() = default;
    ~KelModelBridgeDllInterface() = default;
};
