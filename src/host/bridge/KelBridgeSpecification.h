#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <vector>

/// A bridge's description of itself, for the host to show. Texts are UTF-8.
///
/// A value that owns its texts: copying copies them. The host makes an empty one and passes it to
/// `KelModelBridgeDllInterface::getSpecification`. The references that the getters return are valid until the record
/// changes next.
class KEL_API KelBridgeSpecification {
public:
    /// Replaces the whole record; may throw `std::bad_alloc` and then changes nothing. `extraTexts` is an array of C
    /// strings followed by a null pointer, or null for none. `experimental`: the bridge is not finished. `licensed`: it
    /// needs a licence.
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
