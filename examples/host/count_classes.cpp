// The smallest host: loads the bridge (first argument), imports a model file (second argument) and counts its classes.
// A file that cannot be imported ends the program; list_objects.cpp handles such failures.
#include "host/bridge/KelImportBridge.h"
#include "host/log/KelLog.h"
#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"
#include "host/options/KelOptionList.h"

#include <dlfcn.h>
#include <iostream>

struct Silence final : KelLog {
    void record(const KelLogEvent& /*event*/) override {}
};

struct ClassCount final : KelTraversalOperation {
    void post_process(KelObject* object, void* /*userData*/) override {
        count += object->elementType == KelElementType::classObject ? 1 : 0;
    }
    int count = 0;
};

int main(int argc, char** argv) {
    void* library = argc == 3 ? dlopen(argv[1], RTLD_NOW) : nullptr;
    void* factory = library != nullptr ? dlsym(library, KelImportBridge::factoryName) : nullptr;
    if (factory == nullptr) {
        std::cerr << "usage: count_classes BRIDGE MODEL\n" << (argc == 3 ? dlerror() : "") << '\n';
        return 2;
    }
    KelModelBridgeImportDllInterface& bridge = KelImportBridge::interfaceOf(factory);
    KelOptionList options;
    bridge.getOptionList(options);
    options.setFreeValue(KelImportBridge::option::file, argv[2]);
    KelModel model;
    Silence log;
    bridge.run(KelImportBridge::bridgeId, model, options, log);
    ClassCount classes;
    model.depthTraversal(classes, nullptr);
    std::cout << classes.count << '\n';
}
