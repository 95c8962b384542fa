#pragma once

#include "host/model/KelElement.h"
#include "host/model/links/KelOne.h"

class KelModel;

/// Where the contents of a model come from, and which bridge brought them. A model owns its origins.
///
/// All texts are in the host's encoding; transcoding leaves them alone.
class KEL_API KelMetadataOrigin final : public KelElement {
public:
    KelMetadataOrigin();
    ~KelMetadataOrigin() override;

    [[nodiscard]] KelModel* getModel() const;

    KelString sourceEncoding; // canonical name of the encoding that the texts were converted from
    KelString sourceFormat;
    KelString sourcePath;
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
