// A host that loads the bridge, uses it and unloads it, over and over.

#include "host/bridge/KelImportBridge.h"
#include "host/literals/KelLiteralRegistry.h"
#include "host/log/KelLog.h"
#include "host/model/KelModel.h"
#include "host/options/KelOptionList.h"
#include "support/memory/MemoryShortage.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

class SilentLog final : public KelLog {
public:
    void record(const KelLogEvent& /*event*/) override {}
};

bool isRegistered() {
    return KelLiteralRegistry::instance().findCollection(KelImportBridge::documentId) != nullptr;
}

/// Loads the bridge, imports a model with it if so told, and unloads it. The model outlives the bridge.
void loadAndUnload(bool imports) {
    KelModel model;
    void* library = dlopen(PETAL_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_TRUE(isRegistered());
    void* factory = dlsym(library, KelImportBridge::factoryName);
    ASSERT_NE(factory, nullptr);
    KelModelBridgeImportDllInterface& bridge = KelImportBridge::interfaceOf(factory);
    {
        KelOptionList options; // refers to the bridge's literals, so it goes first
        bridge.getOptionList(options);
        options.setFreeValue(KelImportBridge::option::file, PETAL_EXAMPLES "/everything.mdl");
        SilentLog log;
        if (imports) {
            EXPECT_TRUE(bridge.run("bridge-under-test", model, options, log));
        }
    }
    ASSERT_EQ(dlclose(library), 0);
    EXPECT_EQ(dlopen(PETAL_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr);
    EXPECT_FALSE(isRegistered());
    EXPECT_EQ(model.childPackages().isEmpty(), !imports);
}

TEST(PlugInUnloadingTest, AHundredTimesLeaveNothing) {
    for (const bool imports : {false, true}) {
        loadAndUnload(imports);
        loadAndUnload(imports);
        const long level = liveAllocations();
        for (int time = 0; time < 100; ++time) {
            loadAndUnload(imports);
        }
#ifdef __SANITIZE_ADDRESS__ // keeps notes of each library, and tells leaks by itself
        static_cast<void>(level);
#else
        EXPECT_EQ(liveAllocations(), level) << (imports ? "after imports" : "without an import");
#endif
    }
}

} // namespace
