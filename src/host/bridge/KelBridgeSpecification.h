#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <vector>

/// What a bridge says about itself; a record for the host to show. Texts are UTF-8.
class KEL_API KelBridgeSpecification {
public:
    /// Replaces the whole record. `extraTexts` is a null-terminated array of C strings, or null for none; they
    /// are copied. `experimental` says that the bridge is not finished, `licensed` that it needs a licence.
    void initialize(const KelString& toolWeb, const KelString& vendorName, const KelString& toolName,
                    const KelString& toolVersions, const KelString& methodologySummary, const char* const* extraTexts,
                    const KelString& version, const KelString& description, bool experimental, bool licensed);

    [[nodiscard]] const KelString& getToolWeb() const { return toolWeb_; }
    [[nodiscard]] const KelString& getVendorName() const { return vendorName_; }
    [[nodiscard]] const KelString& getToolName() const { return toolName_; }
    [[nodiscard]] const KelString& getToolVersions() const { return toolVersions_; }
    [[nodiscard]] const KelString& getMethodologySummary() const { return methodologySummary_; }
    [[nodiscard]] const std::vector<KelString>& getExtraTexts() const { return extraTexts_; }
    [[nodiscard]] const KelString& getVersion() const { return version_; }
    [[nodiscard]] const KelString& getDescription() const { return description_; }
    [[nodiscard]] bool isExperimental() const { return experimental_; }
    [[nodiscard]] bool isLicensed() const { return licensed_; }

private:
    KelString toolWeb_;
    KelString vendorName_;
    KelString toolName_;
    KelString toolVersions_;
    KelString methodologySummary_;
    std::vector<KelString> extraTexts_;
    KelString version_;
    KelString description_;
    bool experimental_ = false;
    bool licensed_ = false;
};
