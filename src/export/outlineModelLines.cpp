#include "export/outlineLinesOf.h"

#include "export/OutlineLines.h"
#include "export/outlineForms.h"
#include "export/outlineText.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>

namespace exporter {

namespace {

/// "(length)" or "(length,scale)"; nothing without a length.
std::string size(const KelConcreteType& type) {
    if (type.length == 0 && type.scale == 0) {
        return {};
    }
    const std::string scale = type.scale != 0 ? "," + std::to_string(type.scale) : std::string();
    return "(" + std::to_string(type.length) + scale + ")";
}

std::string lineOfType(const KelConcreteType& type, const char* kind, const KelType* derivedFrom) {
    return kind + plain(type.getName()) + after(": ", type.dataType) + size(type) +
           remarks({{derivedFrom != nullptr, "from " + nameOf(derivedFrom)},
                    {!type.physicalName.isEmpty(), after("physical name ", type.physicalName)},
                    {type.userDefined, "user-defined"}});
}

} // namespace

std::string lineOf(const KelModel& model) {
    return "model" + after(" ", model.getName());
}

void writeLinesBelow(const KelModel& model, OutlineLines& lines) {
    for (const KelMetadataOrigin* origin : model.metadataOrigins()) {
        lines.line(
            "origin" + after(": ", origin->sourcePath) +
            remarks({{!origin->sourceFormat.isEmpty(), after("format ", origin->sourceFormat)},
                     {!origin->sourceEncoding.isEmpty(), after("encoding ", origin->sourceEncoding)},
                     {!origin->toolName.isEmpty(), after("", origin->toolName) + after(" ", origin->toolVersions)}}));
    }
}

std::string lineOf(const KelBaseType& type) {
    return lineOfType(type, "base type ", nullptr);
}

std::string lineOf(const KelDerivedType& type) {
    return lineOfType(type, "type ", type.getDerivedFromConcreteType());
}

void writeLinesBelow(const KelDerivedType& type, OutlineLines& lines) {
    for (const KelTypeValue* value : type.typeValues()) {
        lines.line("value " + plain(value->getName()) + after(" = ", value->value));
    }
}

std::string lineOf(const KelDesignPackage& package) {
    return "package " + plain(package.getName()) +
           (package.stereotype.isEmpty() ? std::string() : " <<" + plain(package.stereotype) + ">>");
}

std::string lineOf(const KelClassDiagram& diagram) {
    return "diagram " + plain(diagram.getName());
}

void writeLinesBelow(const KelClassDiagram& diagram, OutlineLines& lines) {
    for (const KelModelElement* element : diagram.modelElements()) {
        const auto form = std::ranges::find(outlineForms(), element->elementType, &OutlineForm::type);
        if (form != outlineForms().end()) {
            lines.line("shows " + form->line(*element));
        }
    }
}

} // namespace exporter
