#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "completion/ValidateModel.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "literals/QEV_RRSE.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace rose {

namespace {

constexpr int privateVisibility = 2;

KelForeignKey* asForeignKey(KelKey* key) {
    return key->elementType == KelElementType::foreignKey ? static_cast<KelForeignKey*>(key) : nullptr;
}

/// The attribute of the same name in the candidate key that a foreign key refers to, or null.
KelAttribute* sourceOf(const KelAttribute& attribute, KelKey* key) {
    const KelForeignKey* foreignKey = asForeignKey(key);
    const KelCandidateKey* candidate = foreignKey != nullptr ? foreignKey->getCandidateKey() : nullptr;
    return candidate != nullptr ? candidate->attributes().findNamed(attribute.getName()) : nullptr;
}

/// The largest number in the names "base/number" that directly follow `base` in the class, if there is one.
std::optional<int> largestSuffix(const KelClass& owner, const KelString& base) {
    std::optional<int> largest;
    int index = 0;
    static_cast<void>(owner.getAttribute(base, &index));
    for (++index; index < owner.getAttributeCount(); ++index) {
        const KelString& name = owner.getAttribute(index)->getName();
        if (!name.view().starts_with(base.view())) {
            break;
        }
        const char* suffix = name.text() + base.length();
        if (*suffix == '/') {
            const int number = static_cast<int>(std::strtol(suffix + 1, nullptr, 10));
            largest = std::max(largest.value_or(number), number);
        }
    }
    return largest;
}

/// The names of the copies of one attribute. The names in the class are searched once; after that, the largest
/// number is known.
class CopyNames {
public:
    CopyNames(const KelClass& owner, const KelString& base) : owner_(owner), base_(base) {}

    KelString next() {
        if (!searched_) {
            largest_ = largestSuffix(owner_, base_).value_or(0);
            searched_ = true;
        }
        const int suffix = static_cast<int>(static_cast<unsigned int>(largest_) + 1U);
        largest_ = std::max(largest_, suffix);
        KelString name(base_);
        name.append("/" + std::to_string(suffix));
        return name;
    }

private:
    const KelClass& owner_;
    const KelString& base_;
    bool searched_ = false;
    int largest_ = 0;
};

/// Records in the foreign key that the copy replaces the source.
void mapRoleName(KelForeignKey& key, const KelString& name, KelAttribute* source, KelAttribute* copy) {
    auto made = std::make_unique<KelAssociationRoleNameMap>();
    made->setName(name);
    KelAssociationRoleNameMap* map =
        attach(std::move(made), [&](KelAssociationRoleNameMap* added) { return added->addForeignKey(&key); });
    map->addSourceAttribute(source);
    map->addDestinationAttribute(copy);
    trace::repaired(*copy, KelImportReason::splitForKey, map);
}

/// Moves the key from the attribute to a copy of it; false when the class refuses the copy.
bool split(KelClass& owner, KelAttribute& attribute, KelKey* key, KelAttribute* source, CopyNames& names) {
    auto made = std::make_unique<KelAttribute>(attribute);
    made->addType(attribute.getType());
    made->visibility = privateVisibility;
    attribute.removeKey(key);
    made->addKey(key);
    made->setName(names.next());
    KelAttribute* copy = attach(
        std::move(made), [&](KelAttribute* added) { return owner.addAttribute(added); }, KelImportReason::nameTaken);
    if (copy->getAssociatedClass() != &owner) {
        QEV_RRSE::ROS_I_DUPLICATE_ATTRIBUTE.log(*state.localLog);
        return false;
    }
    copy->position = static_cast<std::int16_t>(owner.getAttributeCount() - 1);
    trace::repaired(attribute, KelImportReason::splitForKey, copy);
    if (KelForeignKey* foreignKey = asForeignKey(key); foreignKey != nullptr) {
        mapRoleName(*foreignKey, attribute.getName(), source, copy);
    }
    return true;
}

/// Splits one attribute; false when the class refused a copy.
bool validateAttribute(KelClass& owner, KelAttribute& attribute) {
    const KelKey* classKey = owner.keys().first();
    CopyNames names(owner, attribute.getName());
    while (attribute.keys().count() > 1) {
        KelKey* key = attribute.keys()[1];
        const bool keptClassKey = key == classKey;
        if (keptClassKey) {
            key = attribute.keys()[0];
        }
        KelAttribute* source = sourceOf(attribute, key);
        if (keptClassKey && source != &attribute && attribute.keys().count() == 2) {
            return true;
        }
        if (!split(owner, attribute, key, source, names)) {
            return false;
        }
    }
    return true;
}

} // namespace

void ValidateAttributes(KelClass* validated) {
    bool accepted = true;
    for (int index = 0; accepted && index < validated->getAttributeCount(); ++index) {
        accepted = validateAttribute(*validated, *validated->getAttribute(index));
    }
}

} // namespace rose
