#pragma once

#include "host/bridge/KelModelBridgeImportDllInterface.h"

/// The bridge as its host sees it. Reads one model file at a time into a model of the repository.
class KelIbmRationalRose40ImportDllInterface : public KelModelBridgeImportDllInterface {
public:
    void getSpecification(const KelString& bridgeId, KelBridgeSpecification& specification) override;
    void getOptionList(KelOptionList& options) override;
    KelString getMappingSpecificationXmlFile() override;
    bool run(const KelString& bridgeId, KelModel& model, KelOptionList& options, KelLog& log) override;
};

/// The bridge's one interface object, made at the first call and never destroyed. The library exports nothing else.
extern "C" __attribute__((visibility("default"))) KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface();
