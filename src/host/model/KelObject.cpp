// A single object: its name, fields, comparison, owner and number. deletion.cpp and traversal.cpp have the functions
// that go through a whole model.
#include "host/model/KelObject.h"

#include "host/model/KelNumbering.h"
#include "host/model/KelRenaming.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelRelation.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace {

/// The nearest common base class.
const KelMetaClass& commonClass(const KelMetaClass& left, const KelMetaClass& right) {
    const KelMetaClass* common = &left;
    while (!right.isA(common->getCode())) {
        common = common->getBase();
    }
    return *common;
}

/// The number of numberings so far.
std::atomic<std::uint32_t> numberings = 0;

} // namespace

KelObject::~KelObject() = default;

void KelObject::setFrom(const KelObject& other) {
    setName(other.getName());
    for (const KelField& field : commonClass(getMetaClass(), other.getMetaClass()).fields()) {
        std::visit([&](auto member) { this->*member = other.*member; }, field.member);
    }
}

void KelObject::removeAggregationAssembly() noexcept {
    for (const KelRelationEnd& end : getMetaClass().ownedEnds()) {
        end.relation->clear(*this, end.isHolder);
    }
}

void KelObject::isolate(bool fromOwner) noexcept {
    for (const KelRelationEnd& end : getMetaClass().referringEnds()) {
        end.relation->clear(*this, end.isHolder);
    }
    if (fromOwner) {
        removeAggregationAssembly();
    }
}

bool KelObject::isInstanceOf(KelElementType code) const {
    return getMetaClass().isA(code);
}

KelObject* KelObject::getParent() const {
    for (const KelRelationEnd& end : getMetaClass().ownedEnds()) {
        if (KelObject* owner = end.relation->at(*this, end.isHolder, 0); owner != nullptr) {
            return owner;
        }
    }
    return nullptr;
}

int KelObject::getParentCount() const {
    const auto ends = getMetaClass().ownedEnds();
    return static_cast<int>(std::count_if(ends.begin(), ends.end(), [this](const KelRelationEnd& end) {
        return end.relation->count(*this, end.isHolder) > 0;
    }));
}

bool KelObject::operator==(const KelObject& other) const {
    return equals(other);
}

bool KelObject::operator!=(const KelObject& other) const {
    return !equals(other);
}

bool KelObject::equals(const KelObject& other) const {
    return elementType == other.elementType && finalEquals(other);
}

bool KelObject::finalEquals(const KelObject& other) const {
    const auto fields = getMetaClass().fields();
    return name_ == other.name_ && std::all_of(fields.begin(), fields.end(), [&](const KelField& field) {
               return std::visit([&](auto member) { return this->*member == other.*member; }, field.member);
           });
}

bool KelObject::isReferenced() const {
    const auto ends = getMetaClass().referringEnds();
    return std::any_of(ends.begin(), ends.end(), [this](const KelRelationEnd& end) {
        return !end.isHolder && end.relation->count(*this, false) > 0;
    });
}

void KelObject::setName(const KelString& name) {
    if (!(name == name_)) {
        setName(KelString(name));
    }
}

void KelObject::setName(KelString&& name) {
    if (name == name_) {
        return;
    }
    const auto ends = getMetaClass().collectedEnds();
    for (const KelRelationEnd& end : ends) {
        end.relation->beforeRename(*this, end.isHolder);
    }
    name_ = std::move(name);
    for (const KelRelationEnd& end : ends) {
        end.relation->afterRename(*this, end.isHolder);
    }
}

const KelString& KelObject::getName() const {
    return name_;
}

KelString KelObject::getDisplayName() const {
    return name_;
}

const KelMetaClass& KelObject::getMetaClass() const {
    return KelMetaClass::of(elementType);
}

KelObject* KelObject::_getn(const KelArrayInterface* array, const KelString& name, int* index) const {
    const int from = index != nullptr ? std::max(*index, 0) : 0;
    int found = -1;
    if (const auto* links = dynamic_cast<const KelLinkCollection*>(array); links != nullptr) {
        found = links->indexOfName(name, from);
    } else if (array != nullptr) {
        for (int at = from; at < array->getCount() && found < 0; ++at) {
            const auto* object = static_cast<const KelObject*>((*array)[at]);
            found = object->getName() == name ? at : -1;
        }
    }
    if (found < 0) {
        return nullptr;
    }
    if (index != nullptr) {
        *index = found;
    }
    return static_cast<KelObject*>(const_cast<void*>((*array)[found]));
}

void KelRenaming::add(KelObject& object, KelString&& name) {
    names_.emplace_back(&object, std::move(name));
}

void KelRenaming::carryOut() {
    std::erase_if(names_, [](const auto& one) { return one.first->getName() == one.second; }); // these stay in place
    std::vector<KelLinkCollection*> expecting;
    try {
        for (const auto& [object, name] : names_) {
            for (const KelRelationEnd& end : object->getMetaClass().collectedEnds()) {
                end.relation->expectRename(*object, end.isHolder, expecting);
            }
        }
    } catch (...) {
        std::ranges::for_each(expecting, [](KelLinkCollection* collection) { collection->afterRenames(false); });
        throw;
    }
    for (auto& [object, name] : names_) {
        object->setName(std::move(name));
        object->renaming_ = 1;
    }
    std::ranges::for_each(expecting, [](KelLinkCollection* collection) { collection->afterRenames(true); });
    std::ranges::for_each(names_, [](const auto& one) { one.first->renaming_ = 0; });
    names_.clear();
}

bool KelRenaming::isUnderWay(const KelObject& object) noexcept {
    return object.renaming_ != 0;
}

KelNumbering::KelNumbering() : stamp_(++numberings % (1U << KelObject::stampBits)) {}

void KelNumbering::give(const KelObject& object, std::uint32_t number) noexcept {
    object.number_ = number;
    object.numberStamp_ = stamp_ & ((1U << KelObject::stampBits) - 1);
}

std::uint32_t KelNumbering::numberOf(const KelObject& object) const noexcept {
    return object.numberStamp_ == stamp_ ? object.number_ : 0;
}
