#pragma once

#include "host/bridge/KelModelBridgeDllInterface.h"

class KelLog;
class KelModel;

/// What a bridge offers that reads a model file into the repository.
class KEL_API KelModelBridgeImportDllInterface : public KelModelBridgeDllInterface {
public:
    /// Performs one import into `model`, which is empty, with the options that the user has set. All four
    /// arguments stay the host's. Returns true, or throws `KelException` and leaves the model empty. At most one
    /// import runs in a process at a time.
    virtual bool run(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log) = 0;

protected:
    KelModelBridgeImportDllInterface() = default;
    ~KelModelBridgeImportDllInterface() = default;
};
