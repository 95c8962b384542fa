#include "export/uml/UmlMapping.h"

#include "export/Exporter.h"
#include "export/modelWalk.h"
#include "export/uml/XmlWriter.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelConcreteType.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <functional>
#include <tsl/robin_set.h>
#include <utility>

namespace exporter {

namespace {

constexpr std::array metaclassNames{"uml:Class",         "uml:Interface", "uml:Enumeration",     "uml:DataType",
                                    "uml:PrimitiveType", "uml:Actor",     "uml:AssociationClass"};

struct KindRow {
    ClassKind kind;
    Metaclass metaclass;
};
/// Other kinds are classes.
constexpr std::array kindRows{
    KindRow{ClassKind::interface, Metaclass::interface}, KindRow{ClassKind::enumeration, Metaclass::enumeration},
    KindRow{ClassKind::datatype, Metaclass::dataType},   KindRow{ClassKind::primitive, Metaclass::primitiveType},
    KindRow{ClassKind::actor, Metaclass::actor},
};

constexpr Omission repeatedType{"type", "types", "a different one has the same name"};
constexpr Omission classInstead{"type", "types", "a class has its name, and features refer to that"};
constexpr Omission doubtfulAssociationClass{"association class", "association classes",
                                            "several associations could be theirs, so they remain separate classes"};
constexpr Omission ofItself{"generalization", "generalizations", "a class does not inherit from itself"};
constexpr Omission repeated{"generalization", "generalizations", "another one says the same"};

struct PrimitiveRow {
    std::string_view name; // in lower case, without path
    std::string_view type;
};
constexpr std::array primitiveRows{
    PrimitiveRow{"bool", "Boolean"},
    PrimitiveRow{"boolean", "Boolean"},
    PrimitiveRow{"eboolean", "Boolean"},
    PrimitiveRow{"byte", "Integer"},
    PrimitiveRow{"eint", "Integer"},
    PrimitiveRow{"elong", "Integer"},
    PrimitiveRow{"int", "Integer"},
    PrimitiveRow{"integer", "Integer"},
    PrimitiveRow{"long", "Integer"},
    PrimitiveRow{"long long", "Integer"},
    PrimitiveRow{"short", "Integer"},
    PrimitiveRow{"unsigned", "Integer"},
    PrimitiveRow{"unsigned int", "Integer"},
    PrimitiveRow{"biginteger", "Integer"},
    PrimitiveRow{"double", "Real"},
    PrimitiveRow{"edouble", "Real"},
    PrimitiveRow{"efloat", "Real"},
    PrimitiveRow{"float", "Real"},
    PrimitiveRow{"real", "Real"},
    PrimitiveRow{"bigdecimal", "Real"},
    PrimitiveRow{"char*", "String"},
    PrimitiveRow{"cstring", "String"},
    PrimitiveRow{"estring", "String"},
    PrimitiveRow{"string", "String"},
    PrimitiveRow{"wstring", "String"},
};

/// As a base type and the type that the bridge derives from it are.
bool isSameType(const KelType& one, const KelType& other) {
    return one.getDataType() == other.getDataType() && one.getLength() == other.getLength() &&
           one.getScale() == other.getScale() && one.getTypeValueCount() == 0 && other.getTypeValueCount() == 0;
}

/// Whether it says more than a name.
bool isKnown(const KelType& type) {
    const bool hasDataType = !type.getDataType().isEmpty() && type.getDataType().view() != "undefined";
    return hasDataType || type.getLength() != 0 || type.getScale() != 0 || type.getTypeValueCount() != 0;
}

std::string_view primitiveOf(std::string_view name) {
    const std::string folded = foldedStereotype(text::lastPart(name));
    const auto* row = std::ranges::find(primitiveRows, folded, &PrimitiveRow::name);
    return row != primitiveRows.end() ? row->type : std::string_view();
}

bool isTemplate(const KelClass& one) {
    return one.categoryType == KelClassCategoryType::parameterizedClass ||
           one.categoryType == KelClassCategoryType::parameterizedClassUtility;
}

std::string_view trimmed(std::string_view text, std::string_view what) {
    text.remove_prefix(std::min(text.find_first_not_of(what), text.size()));
    return text.substr(0, text.find_last_not_of(what) + 1);
}

/// The texts between the commas of a list, without those within "<" and ">".
std::vector<std::string_view> listed(std::string_view list) {
    std::vector<std::string_view> items;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t at = 0; at <= list.size(); ++at) {
        if (at == list.size() || (list[at] == ',' && depth == 0)) {
            items.push_back(trimmed(list.substr(begin, at - begin), " \t"));
            begin = at + 1;
        } else {
            depth += list[at] == '<' ? 1 : list[at] == '>' ? -1 : 0;
        }
    }
    return items;
}

const KelAssociationRole* otherRole(const KelAssociationRole& role) {
    const auto roles = role.getAssociation()->associationRoles();
    return roles.count() != 2 ? nullptr : roles[0] == &role ? roles[1] : roles[0];
}

using ClassPair = std::pair<const KelClass*, const KelClass*>;

struct ClassPairHash {
    std::size_t operator()(const ClassPair& pair) const noexcept {
        return KelPointerHash()(pair.first) * 31 + KelPointerHash()(pair.second);
    }
};

ClassPair unordered(const KelClass* one, const KelClass* other) {
    return std::less<>()(other, one) ? ClassPair(other, one) : ClassPair(one, other);
}

/// Whether `name` is "FIRST_SECOND".
bool isJoined(std::string_view name, std::string_view first, std::string_view second) {
    return name.size() == first.size() + 1 + second.size() && name.starts_with(first) && name.ends_with(second) &&
           name[first.size()] == '_';
}

/// An association with its only one of its kind, or how many there are.
struct Candidate {
    const KelAssociation* association = nullptr;
    std::size_t count = 0;

    void add(const KelAssociation& one) {
        association = &one;
        ++count;
    }
};

} // namespace

const char* metaclassName(Metaclass metaclass) {
    return metaclassNames[static_cast<std::size_t>(metaclass)];
}

/// What the document holds of each kind, in its order.
struct UmlMapping::Elements final : ModelVisitor {
    void enter(const KelObject& object) override {
        if (object.elementType == KelElementType::classObject) {
            classes.push_back(static_cast<const KelClass*>(&object));
        } else if (object.elementType == KelElementType::association) {
            associations.push_back(static_cast<const KelAssociation*>(&object));
        } else if (object.isInstanceOf(KelElementType::type)) {
            types.push_back(static_cast<const KelType*>(&object));
        }
    }
    std::vector<const KelClass*> classes;
    std::vector<const KelAssociation*> associations;
    std::vector<const KelType*> types;
};

UmlMapping::UmlMapping(const ExportContext& context, Omissions& omissions)
    : ids_(context.model, context.getSource(), ElementIds::Of::all, ElementIds::Find::byNumber), names_(context.model),
      kinds_(context.options.family(ClassKinds::option.name)),
      associationsOwnEnds_(context.options.get("flavour") == "xmi21") {
    Elements elements;
    walkModel(context.model, documentParts, elements);
    endOwners_.reserve(elements.associations.size());
    for (const KelAssociation* association : elements.associations) {
        endOwners_[association] = association;
    }
    metaclasses_.reserve(elements.classes.size());
    for (const KelClass* one : elements.classes) {
        metaclasses_[one] = plainMetaclassOf(*one);
        if (isTemplate(*one)) {
            const auto [only, isNew] = templates_.try_emplace(one->getName().view(), one);
            only.value() = isNew ? one : nullptr;
        }
    }
    resolveTypes(elements.types, context.options.get("primitives") == "uml", omissions);
    if (context.options.get("association-class") == "fold") {
        findAssociationClasses(elements, omissions);
    }
}

Metaclass UmlMapping::plainMetaclassOf(const KelClass& one) const {
    const auto* row = std::ranges::find(kindRows, kinds_.kindOf(one), &KindRow::kind);
    const Metaclass metaclass = row != kindRows.end() ? row->metaclass : Metaclass::classObject;
    if (metaclass != Metaclass::actor) {
        return metaclass;
    }
    // Actors of UML have neither attributes nor operations.
    const bool ownsEnds = holdsFor(one.associationRoles(), [this](const KelAssociationRole& role) {
        const KelAssociationRole* other = otherRole(role);
        return other != nullptr && other->isNavigable && endOwners_.contains(role.getAssociation());
    });
    return ownsEnds || !one.attributes().isEmpty() || !one.operations().isEmpty() ? Metaclass::classObject : metaclass;
}

bool UmlMapping::hasKeyword(const KelClass& one) const {
    const Metaclass metaclass = metaclassOf(one);
    const bool isClass = metaclass == Metaclass::classObject || metaclass == Metaclass::associationClass;
    return !foldedStereotype(one.stereotype.view()).empty() && (isClass || !kinds_.isNamedByStereotype(one));
}

void UmlMapping::resolveTypes(const std::vector<const KelType*>& types, bool usesLibrary, Omissions& omissions) {
    targets_.reserve(types.size());
    for (const KelType* type : types) {
        const KelClass* named = names_.find(type);
        if (named != nullptr) {
            targets_[type] = {.element = named, .primitive = {}};
            omissions.add(classInstead, static_cast<std::uint64_t>(isKnown(*type)));
            continue;
        }
        const auto [target, isNew] = targetsByName_.try_emplace(xmlText(type->getName().view()));
        if (isNew) {
            target.value().primitive = usesLibrary ? primitiveOf(type->getName().view()) : std::string_view();
            if (target.value().primitive.empty()) {
                target.value().element = type;
                writtenTypes_.push_back(type);
            }
        } else if (const auto* written = static_cast<const KelType*>(target.value().element); written != nullptr) {
            if (!isSameType(*type, *written)) {
                omissions.add(repeatedType);
            } else if (type->elementType == KelElementType::derivedType) {
                derivedTypes_.try_emplace(written, static_cast<const KelConcreteType*>(type));
            }
        }
        targets_[type] = target.value();
    }
}

const KelConcreteType& UmlMapping::detailedOf(const KelConcreteType& written) const {
    const auto found = derivedTypes_.find(&written);
    const bool isBase = written.elementType == KelElementType::baseType;
    return isBase && found != derivedTypes_.end() ? *found->second : written;
}

TypeTarget UmlMapping::targetOf(const KelType* type) const {
    const auto found = targets_.find(type);
    return found != targets_.end() ? found->second : TypeTarget();
}

void UmlMapping::findAssociationClasses(const Elements& elements, Omissions& omissions) {
    tsl::robin_map<ClassPair, Candidate, ClassPairHash> between;
    for (const KelAssociation* association : elements.associations) {
        const auto roles = association->associationRoles();
        if (roles.count() == 2 && classAt(*roles[0]) != nullptr && classAt(*roles[1]) != nullptr) {
            between[unordered(classAt(*roles[0]), classAt(*roles[1]))].add(*association);
        }
    }
    std::vector<AssociationClass> found;
    tsl::robin_map<const KelAssociation*, int, KelPointerHash> uses;
    for (const KelClass* one : elements.classes) {
        Candidate first;
        Candidate second;
        const std::string_view name = one->getName().view();
        for (const KelAssociationRole* role : one->associationRoles()) {
            const KelAssociationRole* other = otherRole(*role);
            const KelClass* end = other != nullptr ? classAt(*other) : nullptr;
            const KelAssociation& association = *role->getAssociation();
            if (end == nullptr || end == one || !endOwners_.contains(&association)) {
                continue;
            }
            const bool isSecond = association.associationRoles()[0] == role;
            const std::string_view text = association.getName().view();
            if (isSecond && isJoined(text, name, end->getName().view())) {
                second.add(association);
            } else if (!isSecond && isJoined(text, end->getName().view(), name)) {
                first.add(association);
            }
        }
        if (first.count == 0 || second.count == 0) {
            continue;
        }
        const auto beside = between.find(unordered(classAt(*first.association->associationRoles()[0]),
                                                   classAt(*second.association->associationRoles()[1])));
        if (first.count == 1 && second.count == 1 && beside != between.end() && beside->second.count == 1) {
            found.push_back({one, beside->second.association, first.association, second.association});
            for (const KelAssociation* used : {first.association, second.association, found.back().association}) {
                ++uses[used];
            }
        } else {
            omissions.add(doubtfulAssociationClass);
        }
    }
    for (const AssociationClass& candidate : found) {
        if (uses[candidate.association] > 1 || uses[candidate.first] > 1 || uses[candidate.second] > 1) {
            omissions.add(doubtfulAssociationClass);
            continue;
        }
        associationClasses_[candidate.self] = candidate;
        metaclasses_[candidate.self] = Metaclass::associationClass;
        endOwners_[candidate.association] = candidate.self;
        endOwners_[candidate.first] = nullptr;
        endOwners_[candidate.second] = nullptr;
    }
}

const AssociationClass* UmlMapping::associationClassOf(const KelClass& one) const {
    const auto found = associationClasses_.find(&one);
    return found != associationClasses_.end() ? &found->second : nullptr;
}

const KelObject* UmlMapping::ownerOfEnds(const KelAssociation& association) const {
    const auto found = endOwners_.find(&association);
    return found != endOwners_.end() ? found->second : nullptr;
}

const KelClass* UmlMapping::classAt(const KelAssociationRole& role) const {
    const KelClass* one = role.getAssociatedClass();
    return one != nullptr && holds(one) ? one : nullptr;
}

const KelClass* UmlMapping::ownerOf(const KelAssociationRole& role) const {
    const KelAssociationRole* other = !associationsOwnEnds_ && role.isNavigable ? otherRole(role) : nullptr;
    const KelClass* owner = other != nullptr ? classAt(*other) : nullptr;
    return owner != nullptr && metaclassOf(*owner) != Metaclass::actor ? owner : nullptr;
}

std::vector<const KelAssociationRole*> UmlMapping::endsOwnedBy(const KelClass& one) const {
    std::vector<const KelAssociationRole*> ends;
    for (const KelAssociationRole* role : one.associationRoles()) {
        const KelAssociationRole* other = otherRole(*role);
        if (other != nullptr && ownerOf(*other) == &one && ownerOfEnds(*role->getAssociation()) != nullptr) {
            ends.push_back(other);
        }
    }
    return ends;
}

std::vector<WrittenGeneralization> UmlMapping::generalizationsOf(const KelClass& subtype, Omissions& omissions) const {
    std::vector<WrittenGeneralization> written;
    tsl::robin_set<const KelClass*, KelPointerHash> supertypes;
    for (const KelGeneralization* said : subtype.generalizationsAsSubtype()) {
        for (const KelClass* supertype : said->supertypeClasses()) {
            if (!holds(supertype) || said->getDesignPackage() == nullptr) {
                continue;
            }
            if (supertype == &subtype) {
                omissions.add(ofItself);
            } else if (!supertypes.insert(supertype).second) {
                omissions.add(repeated);
            } else {
                const bool isFirst =
                    said->subtypeClasses().first() == &subtype && said->supertypeClasses().first() == supertype;
                written.push_back({said, supertype, isFirst});
            }
        }
    }
    return written;
}

bool UmlMapping::isOfInterface(const KelRealization& realization) const {
    const KelClass* client = realization.getRealizationClass();
    const KelClass* specification = realization.getSpecificationClass();
    if (client == nullptr || specification == nullptr || !holds(client) || !holds(specification)) {
        return false;
    }
    const Metaclass metaclass = metaclassOf(*client);
    return metaclassOf(*specification) == Metaclass::interface &&
           (metaclass == Metaclass::classObject || metaclass == Metaclass::associationClass);
}

/// By the qualified name, or by the simple one if a single template has it.
const KelClass* UmlMapping::templateNamed(std::string_view name) const {
    if (const KelClass* found = names_.find(name); found != nullptr && isTemplate(*found)) {
        return found;
    }
    const auto only = templates_.find(text::lastPart(name));
    return only != templates_.end() ? only->second : nullptr;
}

TypeTarget UmlMapping::actualNamed(std::string_view name) const {
    if (const KelClass* found = names_.find(name)) {
        return {.element = found, .primitive = {}};
    }
    const auto type = targetsByName_.find(xmlText(name));
    return type != targetsByName_.end() ? type->second : TypeTarget();
}

Binding UmlMapping::bindingOf(const KelClass& instantiated) const {
    std::string_view name = trimmed(instantiated.getName().view(), " \t()");
    const std::size_t less = std::min(name.find('<'), name.size());
    Binding binding{.boundTemplate = templateNamed(trimmed(name.substr(0, less), " \t")), .actuals = {}};
    if (binding.boundTemplate == nullptr || binding.boundTemplate == &instantiated) {
        return {};
    }
    name.remove_prefix(less);
    if (name.size() > 1 && name.ends_with('>')) {
        for (const std::string_view actual : listed(name.substr(1, name.size() - 2))) {
            binding.actuals.push_back(actualNamed(actual));
        }
    }
    const auto parameters = static_cast<std::size_t>(binding.boundTemplate->arguments().count());
    const bool areFound = std::ranges::all_of(binding.actuals, [](const TypeTarget& actual) {
        return actual.element != nullptr || !actual.primitive.empty();
    });
    return parameters > 0 && binding.actuals.size() <= parameters && areFound ? binding : Binding();
}

} // namespace exporter
