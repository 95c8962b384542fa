#pragma once

#include "host/bridge/KelImportBridge.h"

#include <type_traits>

/// The bridge as its host sees it. Reads one model file at a time into a model of the repository.
class KelIbmRationalRose40ImportDllInterface : public KelModelBridgeImportDllInterface {
public:
    void getSpecification(const KelString& bridgeId, KelBridgeSpecification& specification) override;
    void getOptionList(KelOptionList& options) override;
    KelString getMappingSpecificationXmlFile() override;
    bool run(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log) override;
};

/// The bridge's one interface object, made at the first call and never destroyed. The library exports nothing else;
/// hosts know it as `KelImportBridge::factoryName`.
extern "C" __attribute__((visibility("default"))) KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface();
static_assert(std::is_same_v<decltype(getKelIbmRationalRose40ImportInterface), KelImportBridge::Factory>);
