#include "petal/commands.h"

#include "host/bridge/KelBridgeSpecification.h"
#include "petal/Failure.h"
#include "petal/PlugIn.h"
#include "petal/standardOutput.h"

#include <array>
#include <string>

namespace petal {

namespace {

struct Field {
    const char* label;
    const KelString& (KelBridgeSpecification::*text)() const;
};

constexpr std::array fields{
    Field{"Vendor", &KelBridgeSpecification::getVendorName},
    Field{"Tool", &KelBridgeSpecification::getToolName},
    Field{"Tool versions", &KelBridgeSpecification::getToolVersions},
    Field{"Web page", &KelBridgeSpecification::getToolWeb},
    Field{"Methodology", &KelBridgeSpecification::getMethodologySummary},
    Field{"Bridge version", &KelBridgeSpecification::getVersion},
    Field{"Description", &KelBridgeSpecification::getDescription},
};

std::string line(const std::string& label, const KelString& text) {
    return text.isEmpty() ? std::string() : label + ": " + std::string(text.view()) + "\n";
}

KelBridgeSpecification specificationOf(const PlugIn& plugIn) {
    KelBridgeSpecification specification;
    plugIn.getBridge().getSpecification(PlugIn::bridgeId, specification);
    return specification;
}

} // namespace

void printSpecification() {
    const PlugIn plugIn = PlugIn::load();
    const KelBridgeSpecification specification = specificationOf(plugIn);
    std::string lines;
    for (const Field& field : fields) {
        lines += line(field.label, (specification.*field.text)());
    }
    for (const KelString& extra : specification.getExtraTexts()) {
        lines += line("Note", extra);
    }
    lines += line("Mapping specification", plugIn.getBridge().getMappingSpecificationXmlFile());
    writeToStandardOutput(lines);
}

void printVersions() {
    std::string lines = std::string("petal ") + PETAL_VERSION + "\n";
    try {
        lines += line("bridge", specificationOf(PlugIn::load()).getVersion());
    } catch (const Failure&) {
        writeToStandardOutput(lines); // petal has its version even without a bridge
        throw;
    }
    writeToStandardOutput(lines);
}

} // namespace petal
