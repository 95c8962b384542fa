#pragma once

#include "host/bridge/KelImportBridge.h"

namespace petal {

/// The bridge, loaded as any host loads it: by its library's name and the one function that the library exports.
class PlugIn {
public:
    /// The environment variable that, when it is set and not empty, gives the path of the library.
    static constexpr const char* pathVariable = "PETAL_PLUGIN";
    /// The identifier under which this host runs the bridge.
    static constexpr const char* bridgeId = KelImportBridge::bridgeId;

    /// Loads the library that `pathVariable` names, else the one in the folder "lib" next to the folder of this
    /// program. It is never unloaded, because objects that it made may outlive any scope. Throws a `Failure` with the
    /// outcome `bridgeNotLoaded`.
    static PlugIn load();

    /// Lives as long as the program.
    [[nodiscard]] KelModelBridgeImportDllInterface& getBridge() const { return *bridge_; }

private:
    explicit PlugIn(KelModelBridgeImportDllInterface& bridge) : bridge_(&bridge) {}

    KelModelBridgeImportDllInterface* bridge_;
};

} // namespace petal
