#include "export/jsonMembersOf.h"

#include "export/JsonMembers.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

struct ToolField {
    const char* member;
    KelString KelMetadataOrigin::*text;
};

constexpr std::array toolFields{
    ToolField{"vendor", &KelMetadataOrigin::vendorName},
    ToolField{"name", &KelMetadataOrigin::toolName},
    ToolField{"versions", &KelMetadataOrigin::toolVersions},
    ToolField{"web", &KelMetadataOrigin::toolWeb},
    ToolField{"methodology", &KelMetadataOrigin::methodologySummary},
    ToolField{"bridgeId", &KelMetadataOrigin::bridgeId},
};

void writeOrigin(const KelMetadataOrigin& origin, JsonMembers& members) {
    members.optionalText("sourceEncoding", origin.sourceEncoding);
    members.optionalText("sourceFormat", origin.sourceFormat);
    members.optionalText("sourcePath", origin.sourcePath);
    members.optionalText("sourceKind", origin.sourceKind);
    const bool hasTool =
        std::ranges::any_of(toolFields, [&origin](const ToolField& field) { return !(origin.*field.text).isEmpty(); });
    if (!hasTool) {
        return;
    }
    members.startObject("tool");
    for (const ToolField& field : toolFields) {
        members.optionalText(field.member, origin.*field.text);
    }
    members.endObject();
}

void writeTypeValue(const KelTypeValue& value, JsonMembers& members) {
    members.text("name", value.getName());
    members.optionalText("value", value.value);
    members.number("position", value.position);
}

void writeConcreteType(const KelConcreteType& type, JsonMembers& members) {
    members.text("name", type.getName());
    members.optionalText("description", type.description);
    members.optionalText("dataType", type.dataType);
    members.optionalNumber("length", type.length, 0);
    members.optionalNumber("scale", type.scale, 0);
    members.optionalFlag("userDefined", type.userDefined);
    members.optionalText("physicalName", type.physicalName);
}

} // namespace

void writeMembersOf(const KelModel& model, JsonMembers& members) {
    members.text("name", model.getName());
    members.optionalText("description", model.description);
    members.optionalList("origins", model.metadataOrigins(), writeOrigin);
}

void writeMembersOf(const KelBaseType& type, JsonMembers& members) {
    writeConcreteType(type, members);
}

void writeMembersOf(const KelDerivedType& type, JsonMembers& members) {
    writeConcreteType(type, members);
    members.reference("derivedFrom", type.getDerivedFromConcreteType());
    members.optionalList("values", type.typeValues(), writeTypeValue);
}

} // namespace exporter
