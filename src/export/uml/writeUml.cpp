#include "export/uml/writeUml.h"

#include "export/Exporter.h"
#include "export/modelWalk.h"
#include "export/uml/UmlOutput.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "host/model/KelRealization.h"
#include "host/model/KelTypeValue.h"

#include <algorithm>

namespace exporter {

namespace {

constexpr std::array flavours{
    Flavour{"eclipse", "20131001", "http://www.omg.org/spec/XMI/20131001", "http://www.eclipse.org/uml2/5.0.0/UML",
            "pathmap://UML_LIBRARIES/UMLPrimitiveTypes.library.uml#", true},
    Flavour{"omg", "20131001", "http://www.omg.org/spec/XMI/20131001", "http://www.omg.org/spec/UML/20131001",
            "http://www.omg.org/spec/UML/20131001/PrimitiveTypes.xmi#", false},
    Flavour{"xmi21", "2.1", "http://schema.omg.org/spec/XMI/2.1", "http://schema.omg.org/spec/UML/2.0",
            "http://schema.omg.org/spec/UML/2.0/uml.xml#", false},
};
constexpr const char* ecoreNamespace = "http://www.eclipse.org/emf/2002/Ecore";
/// Element ids begin with a small letter.
constexpr std::string_view typesPackage = "Types";

constexpr Omission diagrams{"class diagram", "class diagrams", "the format has no place for diagrams"};
constexpr Omission generalizations{"generalization", "generalizations", "it lacks a class at one end"};
constexpr Omission realizations{"realization", "realizations", "it lacks a class at one end"};
constexpr Omission dependencies{"dependency", "dependencies", "it lacks a class at one end"};
constexpr Omission characters{"character", "characters", "XML cannot hold it; U+FFFD takes its place"};

struct OriginField {
    std::string_view key;
    KelString KelMetadataOrigin::*text;
};
/// The path is left out: it would make the file depend on the machine.
constexpr std::array originFields{
    OriginField{"sourceFormat", &KelMetadataOrigin::sourceFormat},
    OriginField{"sourceEncoding", &KelMetadataOrigin::sourceEncoding},
    OriginField{"sourceKind", &KelMetadataOrigin::sourceKind},
    OriginField{"vendor", &KelMetadataOrigin::vendorName},
    OriginField{"tool", &KelMetadataOrigin::toolName},
    OriginField{"toolVersions", &KelMetadataOrigin::toolVersions},
    OriginField{"web", &KelMetadataOrigin::toolWeb},
    OriginField{"methodology", &KelMetadataOrigin::methodologySummary},
    OriginField{"bridgeId", &KelMetadataOrigin::bridgeId},
};

std::span<const Part> packageParts(const KelObject& owner) {
    const bool isPackage = owner.isInstanceOf(KelElementType::package);
    return isPackage ? documentParts(owner) : std::span<const Part>();
}

class DocumentWriter final : public ModelVisitor {
public:
    DocumentWriter(UmlOutput& output, std::span<const Omissions::Count> leftOut) : output_(output), leftOut_(leftOut) {}

    void enter(const KelObject& one) override {
        using enum KelElementType;
        switch (one.elementType) {
        case model:
            return startModel(static_cast<const KelModel&>(one));
        case designPackage:
            return startPackage(static_cast<const KelDesignPackage&>(one));
        case classObject:
            return writeClassifier(static_cast<const KelClass&>(one), output_);
        case association:
            return write(static_cast<const KelAssociation&>(one));
        case generalization:
            return check(static_cast<const KelGeneralization&>(one));
        case realization:
            return write(static_cast<const KelRealization&>(one));
        case dependency:
            return write(static_cast<const KelDependency&>(one));
        case classDiagram:
            return output_.omissions().add(diagrams);
        default:
            return; // types come last
        }
    }

    void leave(const KelObject& object) override {
        if (object.elementType == KelElementType::model) {
            if (!static_cast<const KelModel&>(object).isEmpty()) {
                writeTypes();
            }
            output_.end();
        } else if (object.elementType == KelElementType::designPackage) {
            output_.end();
        }
    }

private:
    void startModel(const KelModel& model) {
        const std::string_view id = output_.idOf(model);
        output_.start("uml:Model", "uml:Model", id, Layout::block);
        output_.nameOf(model);
        Details details;
        for (const KelMetadataOrigin* origin : model.metadataOrigins()) {
            for (const OriginField& field : originFields) {
                details.addText(field.key, (origin->*field.text).view());
            }
        }
        for (const auto& [omission, count] : leftOut_) {
            details.addMade("left out: " + std::string(omission.many) + ": " + std::string(omission.why),
                            std::to_string(count));
        }
        output_.annotations(id, {}, details, Layout::block);
        output_.comments(model, id);
    }

    void startPackage(const KelDesignPackage& package) {
        const std::string_view id = output_.idOf(package);
        output_.start("packagedElement", "uml:Package", id, Layout::block);
        output_.nameOf(package);
        output_.annotations(id, package.stereotype.isEmpty() ? Keywords() : Keywords{package.stereotype.view()}, {});
        output_.comments(package, id);
        for (const KelDiagram* diagram : package.diagrams()) { // their texts have a place
            output_.comments(*diagram, {});
        }
    }

    void write(const KelAssociation& association) {
        if (output_.mapping().ownerOfEnds(association) == &association) {
            writeAssociation(association, output_);
        }
    }

    /// Generalizations are written within their subtypes.
    void check(const KelGeneralization& generalization) {
        if (generalization.subtypeClasses().isEmpty() || generalization.supertypeClasses().isEmpty()) {
            output_.omissions().add(generalizations);
        }
    }

    void write(const KelRealization& realization) {
        if (!output_.mapping().isOfInterface(realization)) {
            writeLink("uml:Realization", realization, realization.getRealizationClass(),
                      realization.getSpecificationClass(), realizations);
        }
    }

    void write(const KelDependency& dependency) {
        writeLink("uml:Dependency", dependency, dependency.getClientClass(), dependency.getSupplierClass(),
                  dependencies);
    }

    void writeLink(const char* type, const KelModelObject& link, const KelClass* client, const KelClass* supplier,
                   const Omission& omission) {
        if (!output_.mapping().holds(client) || !output_.mapping().holds(supplier)) {
            output_.omissions().add(omission);
            return;
        }
        const std::string_view id = output_.idOf(link);
        output_.start("packagedElement", type, id, Layout::line);
        output_.nameOf(link);
        output_.plainAttribute("client", output_.idOf(*client));
        output_.plainAttribute("supplier", output_.idOf(*supplier));
        output_.comments(link, id);
        output_.end();
    }

    void writeTypes() {
        output_.start("packagedElement", "uml:Package", typesPackage, Layout::block);
        output_.attribute("name", typesPackage);
        for (const KelType* type : output_.mapping().types()) {
            if (type->elementType == KelElementType::derivedType || type->elementType == KelElementType::baseType) {
                writeType(static_cast<const KelConcreteType&>(*type));
            }
        }
        output_.end();
    }

    void writeType(const KelConcreteType& written) {
        const std::string_view id = output_.idOf(written);
        const KelConcreteType& type = output_.mapping().detailedOf(written);
        const bool hasValues = type.getTypeValueCount() > 0;
        output_.start("packagedElement", metaclassName(hasValues ? Metaclass::enumeration : Metaclass::primitiveType),
                      id, Layout::line);
        output_.nameOf(type);
        Details details;
        details.addText("dataType", type.dataType.view());
        details.addNumber("length", type.length);
        details.addNumber("scale", type.scale);
        details.addFlag("userDefined", type.userDefined);
        details.addText("physicalName", type.physicalName.view());
        const KelConcreteType* base = type.elementType == KelElementType::derivedType
                                          ? static_cast<const KelDerivedType&>(type).getDerivedFromConcreteType()
                                          : nullptr;
        if (base != nullptr) {
            details.add("derivedFrom", base->getName().view());
        }
        output_.annotations(id, {}, details);
        output_.comments(type, id);
        for (int index = 0; index < type.getTypeValueCount(); ++index) {
            const KelTypeValue& value = *type.getTypeValue(index);
            const std::string literal = partId(id, "Value") + std::to_string(index + 1);
            output_.start("ownedLiteral", "uml:EnumerationLiteral", literal, Layout::line);
            output_.nameOf(value);
            if (!value.value.isEmpty()) {
                output_.expression("specification", partId(literal, "Specification"), value.value.view());
            }
            output_.end();
        }
        output_.end();
    }

    UmlOutput& output_;
    std::span<const Omissions::Count> leftOut_;
};

void writeDocument(const KelModel& model, const UmlMapping& mapping, const Flavour& flavour, XmlWriter& xml,
                   std::span<const Omissions::Count> leftOut, Omissions& omissions) {
    UmlOutput output(xml, mapping, flavour, omissions);
    DocumentWriter document(output, leftOut);
    xml.start("xmi:XMI", Layout::block);
    xml.attribute("xmi:version", flavour.xmiVersion);
    xml.attribute("xmlns:xmi", flavour.xmiNamespace);
    xml.attribute("xmlns:ecore", ecoreNamespace);
    xml.attribute("xmlns:uml", flavour.umlNamespace);
    walkModel(model, packageParts, document);
    xml.end();
    xml.finish();
}

} // namespace

void writeUml(const ExportContext& context) {
    const Flavour& flavour = *std::ranges::find(flavours, context.options.get("flavour"), &Flavour::word);
    const UmlMapping mapping(context, context.omissions);
    XmlWriter counter(nullptr);
    writeDocument(context.model, mapping, flavour, counter, {}, context.omissions);
    context.omissions.add(characters, counter.getReplacedCount());
    XmlWriter xml(&context.folder.open(""));
    Omissions known;
    writeDocument(context.model, mapping, flavour, xml, context.omissions.getCounts(), known);
}

} // namespace exporter
