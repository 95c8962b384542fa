#include "export/outline/elementLines.h"

#include "export/asItsClass.h"
#include "export/outline/OutlineLines.h"
#include "export/words.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModelElement.h"
#include "host/model/KelNote.h"
#include "host/model/KelTypeValue.h"
#include "text/escape.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>

namespace exporter {

namespace {

/// `text`, made printable.
std::string plain(const KelString& text) {
    return text::printableText(text.view());
}

/// `prefix` and the text, or nothing if the text is empty.
std::string after(std::string_view prefix, const KelString& text) {
    return text.isEmpty() ? std::string() : std::string(prefix) + plain(text);
}

/// The object's name; "?" for null.
std::string nameOf(const KelObject* object) {
    return object != nullptr ? plain(object->getName()) : "?";
}

/// The names of the objects that `links`, a `KelLinks`, holds: "first, second"; "?" for none.
template <class Links>
std::string namesOf(const Links& links) {
    std::string names;
    for (const auto* object : links) {
        names += (names.empty() ? "" : ", ") + nameOf(object);
    }
    return names.empty() ? "?" : names;
}

/// ": " and the type's name, or nothing without a type.
std::string typed(const KelType* type) {
    return type != nullptr ? ": " + plain(type->getName()) : std::string();
}

struct Remark {
    bool applies;
    std::string text;
};

/// " (first, second)" of the remarks that apply, or nothing.
std::string remarks(std::initializer_list<Remark> all) {
    std::string text;
    for (const Remark& remark : all) {
        if (remark.applies) {
            text += (text.empty() ? " (" : ", ") + remark.text;
        }
    }
    return text.empty() ? text : text + ")";
}

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

std::string line(const KelModel& model) {
    return "model" + after(" ", model.getName());
}

void writeBelow(const KelModel& model, OutlineLines& lines) {
    for (const KelMetadataOrigin* origin : model.metadataOrigins()) {
        lines.line(
            "origin" + after(": ", origin->sourcePath) +
            remarks({{!origin->sourceFormat.isEmpty(), after("format ", origin->sourceFormat)},
                     {!origin->sourceEncoding.isEmpty(), after("encoding ", origin->sourceEncoding)},
                     {!origin->toolName.isEmpty(), after("", origin->toolName) + after(" ", origin->toolVersions)}}));
    }
}

std::string line(const KelBaseType& type) {
    return lineOfType(type, "base type ", nullptr);
}

std::string line(const KelDerivedType& type) {
    return lineOfType(type, "type ", type.getDerivedFromConcreteType());
}

void writeBelow(const KelDerivedType& type, OutlineLines& lines) {
    for (const KelTypeValue* value : type.typeValues()) {
        lines.line("value " + plain(value->getName()) + after(" = ", value->value));
    }
}

std::string line(const KelDesignPackage& package) {
    return "package " + plain(package.getName()) +
           (package.stereotype.isEmpty() ? std::string() : " <<" + plain(package.stereotype) + ">>");
}

std::string line(const KelClassDiagram& diagram) {
    return "diagram " + plain(diagram.getName());
}

void writeBelow(const KelClassDiagram& diagram, OutlineLines& lines) {
    for (const KelModelElement* element : diagram.modelElements()) {
        if (kindWord(element->elementType) != nullptr) {
            lines.line("shows " + lineOf(*element));
        }
    }
}

/// The kind of a relation, its name if it has one, and the classes at its ends.
std::string relation(const char* what, const KelRelationship& relationship, const std::string& from,
                     const std::string& to) {
    return what + after(" ", relationship.getName()) + ": " + from + " -> " + to;
}

/// The foreign keys of a role by name; a nameless one by its attributes.
std::string foreignKeysOf(const KelAssociationRole& role) {
    std::string keys;
    for (const KelForeignKey* key : role.foreignKeys()) {
        keys += keys.empty() ? "" : ", ";
        keys += key->getName().isEmpty() ? namesOf(key->attributes()) : plain(key->getName());
    }
    return "foreign key " + keys;
}

std::string line(const KelAssociation& association) {
    std::string ends;
    for (const KelAssociationRole* role : association.associationRoles()) {
        ends += (ends.empty() ? ": " : ", ") + nameOf(role->getAssociatedClass());
    }
    return "association" + after(" ", association.getName()) + ends +
           remarks({{association.isAggregation, "aggregation"}});
}

std::string line(const KelAssociationRole& role) {
    return "role" + after(" ", role.getName()) + ": " + nameOf(role.getAssociatedClass()) +
           (role.multiplicity.isEmpty() ? std::string() : " [" + plain(role.multiplicity) + "]") +
           remarks({{role.isSource, "source"},
                    {role.isNavigable, "navigable"},
                    {role.isAggregate, "aggregate"},
                    {role.containment == 0, "by value"},
                    {role.containment == 1, "by reference"},
                    {role.isStatic, "static"},
                    {role.isFriend, "friend"},
                    {!role.foreignKeys().isEmpty(), foreignKeysOf(role)}});
}

std::string line(const KelGeneralization& generalization) {
    const char* visibility = visibilityWord(generalization.visibility);
    return relation("generalization", generalization, namesOf(generalization.subtypeClasses()),
                    namesOf(generalization.supertypeClasses())) +
           remarks({{generalization.visibility != 0 && visibility != nullptr, visibility != nullptr ? visibility : ""},
                    {generalization.isVirtual, "virtual"},
                    {generalization.isFriend, "friend"}});
}

std::string line(const KelRealization& realization) {
    return relation("realization", realization, nameOf(realization.getRealizationClass()),
                    nameOf(realization.getSpecificationClass()));
}

std::string line(const KelDependency& dependency) {
    return relation("dependency", dependency, nameOf(dependency.getClientClass()),
                    nameOf(dependency.getSupplierClass()));
}

struct Category {
    KelClassCategoryType category;
    const char* words;
};

constexpr std::array categories{
    Category{KelClassCategoryType::parameterizedClass, "parameterized class "},
    Category{KelClassCategoryType::instantiatedClass, "instantiated class "},
    Category{KelClassCategoryType::classUtility, "class utility "},
    Category{KelClassCategoryType::parameterizedClassUtility, "parameterized class utility "},
    Category{KelClassCategoryType::instantiatedClassUtility, "instantiated class utility "},
    Category{KelClassCategoryType::metaclass, "metaclass "},
    Category{KelClassCategoryType::interface, "interface "},
};

std::string categoryWords(KelClassCategoryType category) {
    const auto* found = std::ranges::find(categories, category, &Category::category);
    return found != categories.end() ? found->words : "class ";
}

/// The sign of a visibility and a blank.
std::string sign(std::int32_t visibility) {
    constexpr std::array<const char*, 4> signs{"+ ", "# ", "- ", "~ "};
    return visibility >= 0 && visibility < 4 ? signs[static_cast<std::size_t>(visibility)] : "? ";
}

std::string declaration(const KelArgument& argument) {
    return plain(argument.getName()) + typed(argument.getType()) + after(" = ", argument.initialValue);
}

std::string attributesOf(const KelKey& key) {
    return key.attributes().isEmpty() ? std::string() : ": " + namesOf(key.attributes());
}

std::string line(const KelClass& classObject) {
    return categoryWords(classObject.categoryType) + plain(classObject.getName()) +
           (classObject.stereotype.isEmpty() ? std::string() : " <<" + plain(classObject.stereotype) + ">>") +
           (classObject.multiplicity.isEmpty() ? std::string() : " [" + plain(classObject.multiplicity) + "]") +
           remarks({{classObject.isAbstract, "abstract"}, {classObject.isPersistent, "persistent"}});
}

std::string line(const KelAttribute& attribute) {
    return sign(attribute.visibility) + plain(attribute.getName()) + typed(attribute.getType()) +
           after(" = ", attribute.initialValue) +
           remarks({{attribute.isStatic, "static"},
                    {attribute.isDerived, "derived"},
                    {attribute.containment == 0, "by value"},
                    {attribute.containment == 1, "by reference"}});
}

std::string line(const KelOperation& operation) {
    std::string arguments;
    for (const KelArgument* argument : operation.arguments()) {
        arguments += (arguments.empty() ? "" : ", ") + declaration(*argument);
    }
    return sign(operation.visibility) + plain(operation.getName()) + "(" + arguments + ")" +
           typed(operation.getReturnType()) +
           remarks({{operation.isStatic, "static"}, {operation.isVirtual, "virtual"}, {operation.isFriend, "friend"}});
}

void writeBelow(const KelOperation& operation, OutlineLines& lines) {
    for (const KelArgument* argument : operation.arguments()) {
        for (const KelNote* note : argument->notes()) {
            lines.paragraph("note on argument " + plain(argument->getName()), note->description.view());
        }
    }
}

std::string line(const KelArgument& argument) {
    return "template argument " + declaration(argument);
}

std::string line(const KelCandidateKey& key) {
    const bool isPrimary = key.getPrimaryOfClass() != nullptr && key.getPrimaryOfClass() == key.getAssociatedClass();
    return (isPrimary ? "primary key" : "candidate key") + after(" ", key.getName()) + attributesOf(key);
}

std::string line(const KelForeignKey& key) {
    const KelCandidateKey* target = key.getCandidateKey();
    return "foreign key" + after(" ", key.getName()) + attributesOf(key) +
           (target == nullptr ? std::string()
                              : " -> " + nameOf(target) + " of " + nameOf(target->getAssociatedClass()));
}

void writeBelow(const KelForeignKey& key, OutlineLines& lines) {
    for (const KelAssociationRoleNameMap* map : key.roleNameMaps()) {
        lines.line("role name map " + plain(map->getName()) + ": " + nameOf(map->getSourceAttribute()) + " -> " +
                   nameOf(map->getDestinationAttribute()));
    }
}

/// All other elements.
void writeBelow(const KelElement& /*element*/, OutlineLines& /*lines*/) {}

} // namespace

std::string lineOf(const KelObject& element) {
    return asItsClass(element, [](const auto& object) { return line(object); });
}

void writeLinesBelow(const KelObject& element, OutlineLines& lines) {
    asItsClass(element, [&](const auto& object) { writeBelow(object, lines); });
}

} // namespace exporter
