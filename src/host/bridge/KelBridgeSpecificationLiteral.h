#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// What the host knows about the tools behind a bridge, whether the bridge is loaded or not. Texts are UTF-8.
struct KelBridgeTool {
    KelString vendorName;
    KelString toolName;
    KelString toolVersions;
    KelString toolWeb; // an address
    KelString methodologySummary;
};

/// The host's description of one bridge.
class KEL_API KelBridgeSpecificationLiteral {
public:
    /// `descriptionLiteralId` identifies the description among the bridge's own text literals.
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
