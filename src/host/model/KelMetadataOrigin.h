#pragma once

#include "host/model/KelElement.h"
#include "host/model/links/KelOne.h"

class KelModel;

/// Where the contents of a model come from, and which bridge brought them. A model owns its origins.
///
/// All texts but the path are UTF-8; transcoding leaves all of them alone.
class KEL_API KelMetadataOrigin final : public KelElement {
public:
    KelMetadataOrigin();
    ~KelMetadataOrigin() override;

    [[nodiscard]] KelModel* getModel() const;

    KelString sourceEncoding; // ICU's canonical name of the file's encoding; empty when that is not known
    KelString sourceFormat;
    KelString sourcePath; // as the file was opened: in the local encoding, relative if it was given so
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
