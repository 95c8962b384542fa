#include "export/modelWalk.h"
#include "export/uml/UmlOutput.h"
#include "export/words.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

/// The stereotypes that the metaclass says by itself, in the order of `Metaclass`.
constexpr std::array<std::string_view, 7> saidStereotypes{"",      "interface", "enumeration", "datatype", "primitive",
                                                          "actor", ""};

struct CategoryRow {
    KelClassCategoryType category;
    std::string_view keyword;
};
constexpr std::array categoryKeywords{
    CategoryRow{KelClassCategoryType::classUtility, "utility"},
    CategoryRow{KelClassCategoryType::parameterizedClassUtility, "utility"},
    CategoryRow{KelClassCategoryType::instantiatedClassUtility, "utility"},
    CategoryRow{KelClassCategoryType::metaclass, "metaclass"},
};

bool isTemplate(const KelClass& one) {
    return one.categoryType == KelClassCategoryType::parameterizedClass ||
           one.categoryType == KelClassCategoryType::parameterizedClassUtility;
}

bool isInstantiated(const KelClass& one) {
    return one.categoryType == KelClassCategoryType::instantiatedClass ||
           one.categoryType == KelClassCategoryType::instantiatedClassUtility;
}

bool isPrimary(const KelKey& key) {
    if (key.elementType != KelElementType::candidateKey) {
        return false;
    }
    const KelClass* owner = static_cast<const KelCandidateKey&>(key).getPrimaryOfClass();
    return owner != nullptr && owner == key.getAssociatedClass();
}

/// In the order of the JSON document.
std::vector<const KelAttribute*> attributesOf(const KelClass& one) {
    const auto parts = documentParts(one);
    const auto part = std::ranges::find(parts, std::string_view("attributes"), &Part::member);
    std::vector<const KelObject*> objects;
    part->collect(one, objects);
    std::vector<const KelAttribute*> attributes;
    std::ranges::transform(objects, std::back_inserter(attributes),
                           [](const KelObject* object) { return static_cast<const KelAttribute*>(object); });
    return attributes;
}

/// Writes one class.
class ClassifierWriter {
public:
    ClassifierWriter(const KelClass& one, UmlOutput& output)
        : one_(one), output_(output), mapping_(output.mapping()), id_(output.idOf(one)),
          metaclass_(mapping_.metaclassOf(one)), association_(mapping_.associationClassOf(one)),
          binding_(isInstantiated(one) ? mapping_.bindingOf(one) : Binding()) {}

    void write() {
        output_.start("packagedElement", metaclassName(metaclass_), id_, Layout::block);
        output_.nameOf(one_);
        output_.optionalFlag("isAbstract", one_.isAbstract);
        if (association_ != nullptr) {
            writeEndReferences(*association_->association, output_, false);
        }
        output_.annotations(id_, keywords(), details());
        writeComments();
        writeKeys();
        writeTemplate();
        writeGeneralizations();
        const std::vector<const KelAttribute*> attributes = attributesOf(one_);
        const bool isEnumeration = metaclass_ == Metaclass::enumeration;
        for (const KelAttribute* attribute : isEnumeration ? std::vector<const KelAttribute*>() : attributes) {
            writeAttribute(*attribute, isId(*attribute), output_);
        }
        for (const KelAssociationRole* role : mapping_.endsOwnedBy(one_)) {
            writeEnd("ownedAttribute", *role, output_.idOf(*mapping_.ownerOfEnds(*role->getAssociation())), output_);
        }
        writeRealizations();
        for (const KelOperation* operation : one_.operations()) {
            writeOperation(*operation, output_);
        }
        for (const KelAttribute* literal : isEnumeration ? attributes : std::vector<const KelAttribute*>()) {
            writeLiteral(*literal, output_);
        }
        if (association_ != nullptr) {
            writeEndReferences(*association_->association, output_, true);
            writeOwnedEnds(*association_->association, id_, output_);
        }
        output_.end();
    }

private:
    [[nodiscard]] Keywords keywords() const {
        Keywords words;
        if (mapping_.hasKeyword(one_)) {
            words.push_back(one_.stereotype.view());
        }
        const auto* category = std::ranges::find(categoryKeywords, one_.categoryType, &CategoryRow::category);
        if (category != categoryKeywords.end()) {
            words.push_back(category->keyword);
        }
        if (isInstantiated(one_) && binding_.boundTemplate == nullptr) {
            words.emplace_back("bind");
        }
        return words;
    }

    [[nodiscard]] Details details() const {
        Details details;
        if (!mapping_.hasKeyword(one_) &&
            foldedStereotype(one_.stereotype.view()) != saidStereotypes[static_cast<std::size_t>(metaclass_)]) {
            details.addText("stereotype", one_.stereotype.view());
        }
        if (isTemplate(one_) && one_.arguments().isEmpty()) {
            details.add("category", categoryWord(one_.categoryType));
        }
        details.addFlag("persistent", one_.isPersistent);
        details.addNumber("space", one_.space);
        details.addText("multiplicity", one_.multiplicity.view());
        details.addText("concurrency", concurrencyOf(one_.concurrency));
        if (const KelCandidateKey* key = one_.getPrimaryKey(); key != nullptr && isPrimary(*key)) {
            details.add("primaryKey", key->getName().view());
            details.addFlag("primaryKey.userDefined", key->userDefined);
        }
        if (association_ != nullptr) {
            details.addText("association", association_->association->getName().view());
            for (const KelAssociation* folded : {association_->first, association_->second}) {
                details.addMade("folded " + std::string(folded->getName().view()), rolesOf(*folded));
            }
        }
        return details;
    }

    /// "a [1], b [0..*]".
    static std::string rolesOf(const KelAssociation& association) {
        std::string text;
        for (const KelAssociationRole* role : association.associationRoles()) {
            text.append(text.empty() ? "" : ", ").append(role->getName().view());
            text.append(role->getName().isEmpty() ? "[" : " [").append(role->multiplicity.view()).append("]");
        }
        return text;
    }

    void writeComments() {
        output_.comments(one_, id_);
        if (association_ == nullptr) {
            return;
        }
        for (const KelAssociation* part : {association_->association, association_->first, association_->second}) {
            output_.comments(*part, id_);
        }
        for (const KelAssociation* part : {association_->first, association_->second}) {
            for (const KelAssociationRole* role : part->associationRoles()) {
                output_.comments(*role, id_);
            }
        }
    }

    /// Primary keys are said by their attributes, unless they have others than those of the class.
    void writeKeys() {
        for (const KelKey* key : one_.keys()) {
            const auto attributes = key->attributes();
            const bool isSaid = isPrimary(*key) && metaclass_ != Metaclass::enumeration &&
                                !holdsFor(attributes, [this](const KelAttribute& attribute) {
                                    return attribute.getAssociatedClass() != &one_;
                                });
            if (isSaid) {
                continue;
            }
            std::vector<std::string> ids;
            for (const KelAttribute* attribute : attributes) {
                if (mapping_.holds(attribute->getAssociatedClass())) {
                    ids.emplace_back(output_.idOf(*attribute));
                }
            }
            Details details;
            details.addFlag("userDefined", key->userDefined);
            std::string rule = "{unique}";
            if (key->elementType == KelElementType::foreignKey) {
                rule = describe(static_cast<const KelForeignKey&>(*key), details);
            }
            output_.constraint(rule, output_.idOf(*key), key->getName().view(), ids, details);
        }
    }

    static std::string describe(const KelForeignKey& key, Details& details) {
        for (const KelAssociationRoleNameMap* map : key.roleNameMaps()) {
            const auto nameOf = [](const KelAttribute* attribute) {
                return attribute != nullptr ? attribute->getName().view() : std::string_view();
            };
            std::string entry(map->getName().view());
            entry.append(": ").append(nameOf(map->getSourceAttribute()));
            entry.append(" -> ").append(nameOf(map->getDestinationAttribute()));
            details.addMade("roleNameMap " + std::to_string(details.entries().size() + 1), std::move(entry));
        }
        const KelCandidateKey* target = key.getCandidateKey();
        const KelClass* owner = target != nullptr ? target->getAssociatedClass() : nullptr;
        return owner == nullptr ? "{foreign key}" : "{foreign key to " + std::string(owner->getName().view()) + "}";
    }

    void writeTemplate() {
        if (binding_.boundTemplate != nullptr) {
            writeBinding();
        }
        if (!isTemplate(one_) || one_.arguments().isEmpty()) {
            return;
        }
        const std::string signature = partId(id_, "Template");
        std::vector<std::string> parameters;
        for (const KelArgument* argument : one_.arguments()) {
            parameters.push_back(partId(output_.idOf(*argument), "Parameter"));
        }
        output_.start("ownedTemplateSignature", "uml:RedefinableTemplateSignature", signature, Layout::block);
        output_.references("parameter", parameters, false);
        auto parameter = parameters.begin();
        for (const KelArgument* argument : one_.arguments()) {
            writeTemplateParameter(*argument, *parameter++);
        }
        output_.end();
    }

    void writeTemplateParameter(const KelArgument& argument, const std::string& id) {
        const std::string element = partId(output_.idOf(argument), "Class");
        output_.start("ownedParameter", "uml:ClassifierTemplateParameter", id, Layout::line);
        output_.plainAttribute("parameteredElement", element);
        Details details;
        if (argument.getType() != nullptr) {
            details.add("type", argument.getType()->getName().view());
        }
        details.addText("default", argument.initialValue.view());
        output_.annotations(id, {}, details);
        output_.comments(argument, id);
        output_.start("ownedParameteredElement", "uml:Class", element, Layout::line);
        output_.nameOf(argument);
        output_.plainAttribute("templateParameter", id);
        output_.end();
        output_.end();
    }

    void writeBinding() {
        const std::string id = partId(id_, "Binding");
        output_.start("templateBinding", "uml:TemplateBinding", id, Layout::line);
        output_.plainAttribute("signature", partId(output_.idOf(*binding_.boundTemplate), "Template"));
        int index = 0;
        for (const TypeTarget& actual : binding_.actuals) {
            const KelArgument& formal = *binding_.boundTemplate->arguments()[index++];
            output_.start("parameterSubstitution", "uml:TemplateParameterSubstitution", id + std::to_string(index),
                          Layout::line);
            output_.typeAttribute("actual", actual);
            output_.plainAttribute("formal", partId(output_.idOf(formal), "Parameter"));
            output_.typeChild("actual", actual);
            output_.end();
        }
        output_.end();
    }

    void writeGeneralizations() {
        for (const WrittenGeneralization& row : mapping_.generalizationsOf(one_, output_.omissions())) {
            const KelGeneralization& said = *row.said;
            const std::string_view supertype = output_.idOf(*row.supertype);
            std::string id(output_.idOf(said));
            if (!row.isFirst) {
                id.append("-Of-").append(id_).append("-To-").append(supertype);
            }
            output_.start("generalization", "uml:Generalization", id, Layout::line);
            output_.plainAttribute("general", supertype);
            Details details;
            details.addText("name", said.getName().view());
            if (said.visibility != 0 && visibilityWord(said.visibility) != nullptr) {
                details.add("visibility", visibilityWord(said.visibility));
            }
            details.addFlag("virtual", said.isVirtual);
            details.addFlag("friend", said.isFriend);
            output_.annotations(id, {}, details);
            if (row.isFirst) {
                output_.comments(said, id);
            }
            output_.end();
        }
    }

    [[nodiscard]] bool isId(const KelAttribute& attribute) const {
        return holdsFor(attribute.keys(),
                        [this](const KelKey& key) { return isPrimary(key) && key.getAssociatedClass() == &one_; });
    }

    void writeRealizations() {
        for (const KelRealization* realization : one_.realizationsAsRealization()) {
            if (!mapping_.isOfInterface(*realization)) {
                continue;
            }
            const std::string_view id = output_.idOf(*realization);
            const std::string_view specification = output_.idOf(*realization->getSpecificationClass());
            output_.start("interfaceRealization", "uml:InterfaceRealization", id, Layout::line);
            output_.nameOf(*realization);
            output_.plainAttribute("client", id_);
            output_.plainAttribute("supplier", specification);
            output_.plainAttribute("contract", specification);
            output_.comments(*realization, id);
            output_.end();
        }
    }

    const KelClass& one_;
    UmlOutput& output_;
    const UmlMapping& mapping_;
    const std::string_view id_;
    const Metaclass metaclass_;
    const AssociationClass* association_; // null: not an association class
    const Binding binding_;
};

} // namespace

void writeClassifier(const KelClass& one, UmlOutput& output) {
    ClassifierWriter(one, output).write();
}

} // namespace exporter
