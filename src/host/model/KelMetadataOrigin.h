#pragma once

#include "host/model/KelElement.h"
#include "host/model/links/KelOne.h"

class KelModel;

/// The origin of a model's contents: the file that was imported, and the bridge that imported it. A model owns its
/// origins; each import adds one.
///
/// All texts except the path are UTF-8. Transcoding changes none of them.
class KEL_API KelMetadataOrigin final : public KelElement {
public:
    KelMetadataOrigin();
    ~KelMetadataOrigin() override;

    [[nodiscard]] KelModel* getModel() const;

    KelString sourceEncoding; // ICU's canonical name of the file's encoding; empty when unknown
    KelString sourceFormat;
    KelString sourcePath; // the path that was opened: in the local encoding, relative if it was given so
    KelString sourceKind;
    KelString vendorName; // of the tool that the bridge reads
    KelString toolName;
    KelString toolVersions;
    KelString toolWeb;
    KelString methodologySummary;
    KelString bridgeId;

private:
    friend struct KelRelations;
    KelOne model_;
};
