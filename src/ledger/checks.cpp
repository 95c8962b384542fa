#include "ledger/checks.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "ledger/reasons.h"

#include <algorithm>
#include <charconv>

namespace ledger {

namespace {

template <class Kind>
const Kind& as(const Checked& checked) {
    return static_cast<const Kind&>(checked.object);
}

bool is(const Checked& checked, KelElementType type) {
    return checked.object.elementType == type;
}

/// What a text means to the import. The last row of a table, without a text, stands for all others.
struct Code {
    const char* text;
    std::int32_t code;
    const char* word; ///< how the model tells the code
};

Verdict compareCode(const Checked& checked, std::span<const Code> codes, std::int32_t inModel) {
    const std::string taken = takenText(checked);
    const auto row =
        std::ranges::find_if(codes, [&](const Code& at) { return at.text == nullptr || at.text == taken; });
    const bool isKnown = row->text != nullptr;
    if (row->code == inModel && isKnown) {
        return {&reasons::kept, {}};
    }
    const auto found = std::ranges::find(codes, inModel, &Code::code);
    return {&reasons::differs, found != codes.end() ? found->word : std::to_string(inModel)};
}

constexpr auto visibilities = std::to_array<Code>({
    {"Public", 0, "public"},
    {"Protected", 1, "protected"},
    {"Private", 2, "private"},
    {"Implementation", 3, "implementation"},
    {nullptr, -1, ""},
});
constexpr auto containments = std::to_array<Code>({
    {"By Value", 0, "by value"},
    {"By Reference", 1, "by reference"},
    {"Unspecified", 2, "unspecified"},
    {nullptr, -1, ""},
});
constexpr auto concurrencies = std::to_array<Code>({
    {"Sequential", 0, "sequential"},
    {"Guarded", 1, "guarded"},
    {nullptr, 3, "neither sequential nor guarded"},
});

struct Multiplicity {
    std::string_view text;
    std::string_view inModel;
};
constexpr auto multiplicities = std::to_array<Multiplicity>({
    {"0..n", "0..*"},
    {"1..n", "1..*"},
    {"1..1", "1"},
    {"0..0", "0"},
});

} // namespace

namespace checks {

Verdict description(const Checked& checked) {
    return compareText(checked, as<KelModelObject>(checked).description);
}

Verdict noteText(const Checked& checked) {
    return compareText(checked, as<KelNote>(checked).description);
}

Verdict stereotype(const Checked& checked) {
    return compareText(checked, is(checked, KelElementType::classObject) ? as<KelClass>(checked).stereotype
                                                                         : as<KelDesignPackage>(checked).stereotype);
}

Verdict initialValue(const Checked& checked) {
    return compareText(checked, is(checked, KelElementType::attribute) ? as<KelAttribute>(checked).initialValue
                                                                       : as<KelArgument>(checked).initialValue);
}

Verdict type(const Checked& checked) {
    const KelType* found = is(checked, KelElementType::attribute)  ? as<KelAttribute>(checked).getType()
                           : is(checked, KelElementType::argument) ? as<KelArgument>(checked).getType()
                                                                   : as<KelOperation>(checked).getReturnType();
    const std::string taken = takenText(checked);
    if (found == nullptr) {
        return {taken.empty() ? &reasons::kept : &reasons::notInModel, {}};
    }
    const std::string_view expected = is(checked, KelElementType::operation) ? taken : classNamed(taken);
    if (found->getName().view() == expected) {
        return compareText(checked, KelString(std::string_view(taken)));
    }
    return {&reasons::typeDiffers, std::string(found->getName().view())};
}

Verdict visibility(const Checked& checked) {
    const std::int32_t found = is(checked, KelElementType::attribute)   ? as<KelAttribute>(checked).visibility
                               : is(checked, KelElementType::operation) ? as<KelOperation>(checked).visibility
                                                                        : as<KelGeneralization>(checked).visibility;
    return compareCode(checked, visibilities, found);
}

Verdict containment(const Checked& checked) {
    return compareCode(checked, containments,
                       is(checked, KelElementType::attribute) ? as<KelAttribute>(checked).containment
                                                              : as<KelAssociationRole>(checked).containment);
}

Verdict concurrency(const Checked& checked) {
    return compareCode(checked, concurrencies, as<KelOperation>(checked).concurrency);
}

Verdict multiplicity(const Checked& checked) {
    const KelString& found = is(checked, KelElementType::classObject) ? as<KelClass>(checked).multiplicity
                                                                      : as<KelAssociationRole>(checked).multiplicity;
    const auto row = std::ranges::find(multiplicities, std::string_view(takenText(checked)), &Multiplicity::text);
    return row != multiplicities.end() && row->inModel == found.view() ? Verdict{&reasons::kept, {}}
                                                                       : compareText(checked, found);
}

Verdict label(const Checked& checked) {
    return compareText(checked, checked.object.getName());
}

Verdict isAbstract(const Checked& checked) {
    return compareFlag(checked, as<KelClass>(checked).isAbstract);
}

Verdict isPersistent(const Checked& checked) {
    if (!as<KelClass>(checked).isPersistent) {
        return {&reasons::notInModel, {}};
    }
    return takenText(checked) == "Persistent" ? Verdict{&reasons::kept, {}} : Verdict{&reasons::differs, "persistent"};
}

Verdict space(const Checked& checked) {
    std::int32_t expected = 0;
    const std::string taken = takenText(checked);
    std::from_chars(taken.data(), taken.data() + taken.size(), expected);
    const std::int32_t found = as<KelClass>(checked).space;
    if (found == expected && std::to_string(found) == taken) {
        return {&reasons::kept, {}};
    }
    return found == 0 ? Verdict{&reasons::notInModel, {}} : Verdict{&reasons::differs, std::to_string(found)};
}

Verdict isStatic(const Checked& checked) {
    return compareFlag(checked, is(checked, KelElementType::attribute)   ? as<KelAttribute>(checked).isStatic
                                : is(checked, KelElementType::operation) ? as<KelOperation>(checked).isStatic
                                                                         : as<KelAssociationRole>(checked).isStatic);
}

Verdict isDerived(const Checked& checked) {
    return compareFlag(checked, as<KelAttribute>(checked).isDerived);
}

Verdict isVirtual(const Checked& checked) {
    return compareFlag(checked, is(checked, KelElementType::operation) ? as<KelOperation>(checked).isVirtual
                                                                       : as<KelGeneralization>(checked).isVirtual);
}

Verdict isFriend(const Checked& checked) {
    return compareFlag(checked, is(checked, KelElementType::operation) ? as<KelOperation>(checked).isFriend
                                : is(checked, KelElementType::generalization)
                                    ? as<KelGeneralization>(checked).isFriend
                                    : as<KelAssociationRole>(checked).isFriend);
}

Verdict isNavigable(const Checked& checked) {
    return compareFlag(checked, as<KelAssociationRole>(checked).isNavigable);
}

Verdict isAggregate(const Checked& checked) {
    const auto& role = as<KelAssociationRole>(checked);
    const bool isMissing = checked.value.text == "TRUE" && !role.isAggregate;
    return isMissing && role.getAssociation() != nullptr && role.getAssociation()->isAggregation
               ? Verdict{&reasons::onAssociationOnly, {}}
               : compareFlag(checked, role.isAggregate);
}

Verdict supplier(const Checked&) {
    return {&reasons::kept, {}}; // what it names is how the object was found in the model
}

Verdict associationClass(const Checked& checked) {
    const std::string taken = takenText(checked);
    const std::string_view name = classNamed(taken);
    const KelAssociationRole* first = as<KelAssociation>(checked).associationRoles().first();
    const KelClass* end = first != nullptr ? first->getAssociatedClass() : nullptr;
    if (end == nullptr) {
        return {&reasons::notInModel, {}};
    }
    std::string signature;
    for (const std::string& part : {std::string(end->getName().view()) + "_" + std::string(name), std::string(),
                                    std::string(end->getName().view()), std::string(), std::string(name)}) {
        ModelIndex::addToSignature(signature, part);
    }
    return {checked.index.takeAssociation(signature) != nullptr ? &reasons::associationClass : &reasons::notInModel,
            std::string(name)};
}

Verdict roleLabel(const Checked& checked) {
    return takenText(checked) == checked.object.getName().view() ? Verdict{&reasons::kept, {}}
                                                                 : Verdict{&reasons::noPlace, {}};
}

Verdict operationText(const Checked& checked) {
    struct Text {
        std::string_view key;
        KelString KelOperation::*text;
    };
    static constexpr auto texts = std::to_array<Text>({{"pre_condition", &KelOperation::precondition},
                                                       {"post_condition", &KelOperation::postcondition},
                                                       {"semantics", &KelOperation::semantics}});
    const auto* row = std::ranges::find(texts, checked.owner.key, &Text::key);
    return row != texts.end() ? compareText(checked, as<KelOperation>(checked).*(row->text))
                              : Verdict{&reasons::noPlace, {}};
}

} // namespace checks

} // namespace ledger
