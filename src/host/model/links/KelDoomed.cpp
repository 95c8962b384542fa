#include "host/model/links/KelDoomed.h"

#include "host/model/KelObject.h"
#include "host/model/links/KelRelation.h"

namespace {

thread_local KelObject* firstDoomed = nullptr;
thread_local bool deletingAll = false;

} // namespace

/// The owner link that the list runs through: the first of the object's class.
class KelRelation::OwnerSlot {
public:
    explicit OwnerSlot(KelObject& object) noexcept
        : link_(object.*KelMetaClass::of(object.elementType).ownedEnds().front().relation->targetEnd.one) {}

    void holdNext(KelObject* next) noexcept { link_.holdNextDoomed(next); }
    /// The next object on the list; the link is free again.
    KelObject* takeNext() noexcept {
        KelObject* next = link_.pointer();
        link_.hold(nullptr);
        return next;
    }

private:
    KelOne& link_;
};

void KelDoomed::add(KelObject& object) noexcept {
    if (object.doomed_ || object.dissolved_) {
        return;
    }
    for (const KelRelationEnd& end : KelMetaClass::of(object.elementType).ownedEnds()) {
        end.relation->clear(object, false);
    }
    object.doomed_ = true;
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
