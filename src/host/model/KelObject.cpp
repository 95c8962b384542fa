#include "host/model/KelObject.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/convertText.h"
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelTraversalOperation.h"
#include "host/model/depthFirst.h"
#include "host/model/links/KelDoomed.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelRelation.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/// The nearest class that objects of both classes are of.
const KelMetaClass& commonClass(const KelMetaClass& left, const KelMetaClass& right) {
    const KelMetaClass* common = &left;
    while (!right.isA(common->getCode())) {
        common = common->getBase();
    }
    return *common;
}

/// Converts the texts of each object visited, but only collects the new names: a renaming moves the object within
/// the collections that the traversal walks.
class Transcoding final : public KelTraversalOperation {
public:
    Transcoding(KelEncodingConverter& from, KelEncodingConverter& to, int& stringCount, int& errorCount)
        : from_(from), to_(to), stringCount_(stringCount), errorCount_(errorCount) {}

    void post_process(KelObject* object, void* /*userData*/) override {
        if (object->elementType == KelElementType::metadataOrigin) {
            return; // in the host's encoding already
        }
        convertName(*object);
        for (const KelField& field : object->getMetaClass().fields()) {
            const auto* text = std::get_if<KelString KelObject::*>(&field.member);
            if (text != nullptr) {
                convert(object->*(*text));
            }
        }
    }

    /// Gives the objects their new names.
    void rename() {
        for (const auto& [object, name] : newNames_) {
            object->setName(name);
        }
    }

private:
    void convertName(KelObject& object) {
        const KelString& name = object.getName();
        if (from_.isPlainText(name.view()) && to_.isPlainText(name.view())) {
            stringCount_ += static_cast<int>(!name.isEmpty());
            return;
        }
        KelString converted(name);
        convert(converted);
        newNames_.emplace_back(&object, std::move(converted));
    }

    void convert(KelString& text) {
        if (!text.isEmpty()) {
            ++stringCount_;
            errorCount_ += static_cast<int>(!convertText(from_, to_, text));
        }
    }

    KelEncodingConverter& from_;
    KelEncodingConverter& to_;
    int& stringCount_;
    int& errorCount_;
    std::vector<std::pair<KelObject*, KelString>> newNames_;
};

} // namespace

KelObject::~KelObject() = default;

void KelObject::setFrom(const KelObject& other) {
    setName(other.getName());
    for (const KelField& field : commonClass(getMetaClass(), other.getMetaClass()).fields()) {
        std::visit([&](auto member) { this->*member = other.*member; }, field.member);
    }
}

void KelObject::dissolve() noexcept {
    if (dissolved_) {
        return;
    }
    KelDeletionObserver::announce(*this);
    dissolved_ = true;
    const KelMetaClass& metaClass = KelMetaClass::of(elementType);
    for (const KelRelationEnd& end : metaClass.ownedEnds()) {
        end.relation->clear(*this, end.isHolder);
    }
    for (const KelRelationEnd& end : metaClass.referringEnds()) {
        if (end.isHolder && end.relation->hold == KelHold::refersDeletes) {
            end.relation->doomTargets(*this);
        }
        end.relation->clear(*this, end.isHolder);
    }
    deleteOwned();
}

void KelObject::deleteOwned() noexcept {
    for (const KelRelationEnd& end : KelMetaClass::of(elementType).owningEnds()) {
        end.relation->doomTargets(*this);
    }
    KelDoomed::deleteAll();
}

void KelObject::removeAggregationAssembly() noexcept {
    for (const KelRelationEnd& end : getMetaClass().ownedEnds()) {
        end.relation->clear(*this, end.isHolder);
    }
}

void KelObject::recursiveDelete() noexcept {
    delete this;
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

void KelObject::transcode(KelEncodingConverter* from, KelEncodingConverter* to, int& stringCount, int& errorCount) {
    Transcoding transcoding(*from, *to, stringCount, errorCount);
    depthTraversal(transcoding, nullptr);
    transcoding.rename();
}

void KelObject::depthTraversal(KelTraversalOperation& operation, void* userData) {
    visitDepthFirst(*this, operation, userData, KelVisit::objectAndParts);
}

void KelObject::_depthTraversal(KelTraversalOperation& operation, void* userData) {
    visitDepthFirst(*this, operation, userData, KelVisit::partsOnly);
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
