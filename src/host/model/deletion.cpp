// The deletion of an object: observers are called, links are broken, and owned objects are deleted without recursion.
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelObject.h"
#include "host/model/links/KelDoomed.h"
#include "host/model/links/KelRelation.h"

namespace {

thread_local KelDeletionObserver* firstObserver = nullptr;
thread_local KelObject* firstDoomed = nullptr;
thread_local bool deletingAll = false;

} // namespace

KelDeletionObserver::KelDeletionObserver() noexcept : next_(firstObserver) {
    firstObserver = this;
}

KelDeletionObserver::~KelDeletionObserver() {
    KelDeletionObserver** link = &firstObserver;
    while (*link != this) {
        link = &(*link)->next_;
    }
    *link = next_;
}

void KelDeletionObserver::announce(KelObject& object) noexcept {
    for (KelDeletionObserver* observer = firstObserver; observer != nullptr; observer = observer->next_) {
        observer->deleting(object);
    }
}

void KelObject::dissolve() noexcept {
    if (dissolved_ != 0) {
        return;
    }
    KelDeletionObserver::announce(*this);
    dissolved_ = 1;
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

void KelObject::recursiveDelete() noexcept {
    delete this;
}

/// The owner link that serves as the list's next pointer: the first one of the object's class.
class KelRelation::OwnerSlot {
public:
    explicit OwnerSlot(KelObject& object) noexcept
        : link_(object.*KelMetaClass::of(object.elementType).ownedEnds().front().relation->targetEnd.one) {}

    void holdNext(KelObject* next) noexcept { link_.holdNextDoomed(next); }
    /// Returns the next object in the list and sets the link to null.
    KelObject* takeNext() noexcept {
        KelObject* next = link_.pointer();
        link_.hold(nullptr);
        return next;
    }

private:
    KelOne& link_;
};

void KelDoomed::add(KelObject& object) noexcept {
    if (object.doomed_ != 0 || object.dissolved_ != 0) {
        return;
    }
    for (const KelRelationEnd& end : KelMetaClass::of(object.elementType).ownedEnds()) {
        end.relation->clear(object, false);
    }
    object.doomed_ = 1;
    KelRelation::OwnerSlot(object).holdNext(firstDoomed);
    firstDoomed = &object;
}

void KelDoomed::deleteAll() noexcept {
    if (deletingAll) {
        return;
    }
    deletingAll = true;
    while (firstDoomed != nullptr) {
        KelObject* object = firstDoomed;
        firstDoomed = KelRelation::OwnerSlot(*object).takeNext();
        delete object;
    }
    deletingAll = false;
}
