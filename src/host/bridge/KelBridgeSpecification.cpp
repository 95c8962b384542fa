#include "host/bridge/KelBridgeSpecification.h"

#include <utility>

void KelBridgeSpecification::initialize(const KelString& toolWeb, const KelString& vendorName,
                                        const KelString& toolName, const KelString& toolVersions,
                                        const KelString& methodologySummary, const char* const* extraTexts,
                                        const KelString& version, const KelString& description, bool experimental,
                                        bool licensed) {
    KelBridgeSpecification filled;
    filled.toolWeb_ = toolWeb;
    filled.vendorName_ = vendorName;
    filled.toolName_ = toolName;
    filled.toolVersions_ = toolVersions;
    filled.methodologySummary_ = methodologySummary;
    for (const char* const* text = extraTexts; text != nullptr && *text != nullptr; ++text) {
        filled.extraTexts_.emplace_back(*text);
    }
    filled.version_ = version;
    filled.description_ = description;
    filled.experimental_ = experimental;
    filled.licensed_ = licensed;
    *this = std::move(filled);
}
