#include "export/outlineLinesOf.h"

#include "export/OutlineLines.h"
#include "export/outlineText.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

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

} // namespace

std::string lineOf(const KelClass& classObject) {
    return categoryWords(classObject.categoryType) + plain(classObject.getName()) +
           (classObject.stereotype.isEmpty() ? std::string() : " <<" + plain(classObject.stereotype) + ">>") +
           (classObject.multiplicity.isEmpty() ? std::string() : " [" + plain(classObject.multiplicity) + "]") +
           remarks({{classObject.isAbstract, "abstract"}, {classObject.isPersistent, "persistent"}});
}

std::string lineOf(const KelAttribute& attribute) {
    return sign(attribute.visibility) + plain(attribute.getName()) + typed(attribute.getType()) +
           after(" = ", attribute.initialValue) +
           remarks({{attribute.isStatic, "static"},
                    {attribute.isDerived, "derived"},
                    {attribute.containment == 0, "by value"},
                    {attribute.containment == 1, "by reference"}});
}

std::string lineOf(const KelOperation& operation) {
    std::string arguments;
    for (const KelArgument* argument : operation.arguments()) {
        arguments += (arguments.empty() ? "" : ", ") + declaration(*argument);
    }
    return sign(operation.visibility) + plain(operation.getName()) + "(" + arguments + ")" +
           typed(operation.getReturnType()) +
           remarks({{operation.isStatic, "static"}, {operation.isVirtual, "virtual"}, {operation.isFriend, "friend"}});
}

void writeLinesBelow(const KelOperation& operation, OutlineLines& lines) {
    for (const KelArgument* argument : operation.arguments()) {
        for (const KelNote* note : argument->notes()) {
            lines.paragraph("note on argument " + plain(argument->getName()), note->description.view());
        }
    }
}

std::string lineOf(const KelArgument& argument) {
    return "template argument " + declaration(argument);
}

std::string lineOf(const KelCandidateKey& key) {
    const bool isPrimary = key.getPrimaryOfClass() != nullptr && key.getPrimaryOfClass() == key.getAssociatedClass();
    return (isPrimary ? "primary key" : "candidate key") + after(" ", key.getName()) + attributesOf(key);
}

std::string lineOf(const KelForeignKey& key) {
    const KelCandidateKey* target = key.getCandidateKey();
    return "foreign key" + after(" ", key.getName()) + attributesOf(key) +
           (target == nullptr ? std::string()
                              : " -> " + nameOf(target) + " of " + nameOf(target->getAssociatedClass()));
}

void writeLinesBelow(const KelForeignKey& key, OutlineLines& lines) {
    for (const KelAssociationRoleNameMap* map : key.roleNameMaps()) {
        lines.line("role name map " + plain(map->getName()) + ": " + nameOf(map->getSourceAttribute()) + " -> " +
                   nameOf(map->getDestinationAttribute()));
    }
}

} // namespace exporter
