#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// The host's knowledge of the tool whose files a bridge reads. Texts are UTF-8.
struct KelBridgeTool {
    KelString vendorName;
    KelString toolName;
    KelString toolVersions;
    KelString toolWeb; // a web address
    KelString methodologySummary;
};

/// The host's description of one bridge, available without loading the bridge. It does not change once it is made, so
/// any number of threads may read it; it is not copyable.
class KEL_API KelBridgeSpecificationLiteral {
public:
    /// `descriptionLiteralId` identifies the description in the bridge's text literals.
    KelBridgeSpecificationLiteral(const KelString& bridgeId, const KelString& descriptionLiteralId,
                                  const KelBridgeTool& tool)
        : bridgeId_(bridgeId), descriptionLiteralId_(descriptionLiteralId), tool_(tool) {}
    KelBridgeSpecificationLiteral(const KelBridgeSpecificationLiteral&) = delete;
    KelBridgeSpecificationLiteral& operator=(const KelBridgeSpecificationLiteral&) = delete;

    [[nodiscard]] const KelString& getBridgeId() const { return bridgeId_; }
    [[nodiscard]] const KelString& getInternalCode_DescriptionLiteralId() const { return descriptionLiteralId_; }
    [[nodiscard]] const KelString& getMethodology_Summary() const { return tool_.methodologySummary; }
    [[nodiscard]] const KelString& getTool_Versions() const { return tool_.toolVersions; }
    [[nodiscard]] const KelString& getTool_Name() const { return tool_.toolName; }
    [[nodiscard]] const KelString& getVendor_Name() const { return tool_.vendorName; }
    [[nodiscard]] const KelString& getTool_Web() const { return tool_.toolWeb; }

private:
    KelString bridgeId_;
    KelString descriptionLiteralId_;
    KelBridgeTool tool_;
};
