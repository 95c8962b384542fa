// A host that observes the import: it lists the objects of the model, each with the offset in the file of the keyword
// that made it, and counts the keywords without effect. Unlike count_classes.cpp, it also sets the locale, prints
// warnings and errors, and reports why a file cannot be imported.
#include "host/bridge/KelImportBridge.h"
#include "host/bridge/KelImportObserver.h"
#include "host/log/KelException.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelModel.h"
#include "host/model/KelTraversalOperation.h"
#include "host/options/KelOptionList.h"

#include <clocale>
#include <cstdint>
#include <dlfcn.h>
#include <iostream>
#include <unordered_map>

struct Warnings final : KelLog {
    Warnings() { setMaximumLevel(severityLevel("WARNING")); } // the bridge does not compose the texts of other events
    void record(const KelLogEvent& event) override {
        std::cerr << severityWord(event.getSeverityLevel()) << ": " << event.getText().text() << '\n';
    }
};

// The offsets of the model's objects. It keeps pointers to them, so it also observes deletions.
class Origins final : public KelImportObserver, public KelDeletionObserver {
public:
    std::unordered_map<const KelObject*, std::uint64_t> offsets;
    int refusals = 0;

    void made(const KelImportSource& by, KelObject& object) override {
        if (by.rule != 0) { // 0: made by a repair after the scan, not by a keyword
            offsets[&object] = by.begin;
        }
    }
    void named(const KelImportSource& by, KelObject& object) override { offsets.try_emplace(&object, by.begin); }
    void replaced(KelObject& object, KelImportReason /*why*/, KelObject& by) override {
        if (const auto found = offsets.find(&object); found != offsets.end()) {
            const std::uint64_t offset = found->second;
            offsets.try_emplace(&by, offset);
        }
    }
    void refused(const KelImportSource& /*by*/, KelImportReason /*why*/, KelObject* /*object*/,
                 KelObject* /*other*/) override {
        ++refusals;
    }
    void changed(const KelImportSource& /*by*/, KelObject& /*object*/, KelObject* /*other*/,
                 KelImportReason /*why*/) override {}
    void gate(const KelImportSource& /*at*/, KelImportReason /*why*/) override {}
    void repaired(KelObject& /*object*/, KelImportReason /*why*/, KelObject* /*other*/) override {}
    void removing(KelObject& /*object*/, KelImportReason /*why*/) noexcept override {}

    void deleting(KelObject& object) noexcept override { offsets.erase(&object); }
};

class Listing final : public KelTraversalOperation {
public:
    explicit Listing(const Origins& origins) : origins_(origins) {}
    void pre_process(KelObject* object, void*& /*userData*/) override {
        if (const auto found = origins_.offsets.find(object); found != origins_.offsets.end()) {
            std::cout << found->second << ' ' << object->getMetaClass().getClassName() << ' '
                      << object->getName().text() << '\n';
        }
    }
    void post_process(KelObject* /*object*/, void* /*userData*/) override {}

private:
    const Origins& origins_;
};

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    void* library = argc == 3 ? dlopen(argv[1], RTLD_NOW) : nullptr;
    void* factory = library != nullptr ? dlsym(library, KelImportBridge::factoryName) : nullptr;
    if (factory == nullptr) {
        std::cerr << "usage: list_objects BRIDGE MODEL\n" << (argc == 3 ? dlerror() : "") << '\n';
        return 2;
    }
    KelModelBridgeImportDllInterface& bridge = KelImportBridge::interfaceOf(factory);
    KelOptionList options;
    bridge.getOptionList(options);
    options.setFreeValue(KelImportBridge::option::file, argv[2]); // in UTF-8
    KelModel model;
    Warnings log;
    Origins origins; // destroyed before the model, whose deletion it need not observe
    try {
        bridge.run(KelImportBridge::bridgeId, model, options, log);
    } catch (const KelException& failure) { // the model is empty
        std::cerr << failure.what() << '\n';
        return 1;
    }
    Listing listing(origins);
    model.depthTraversal(listing, nullptr);
    std::cout << origins.refusals << " keywords without effect\n";
}
