#pragma once

#include "builder/Trace.h"
#include "host/model/KelObject.h"

#include <memory>

namespace rose {

/// Owns an object that nothing has accepted, until it finds an owner or is deleted.
void keepUnattached(std::unique_ptr<KelObject> object);

/// Gives up an object that is being deleted.
void forgetUnattached(const KelObject& object) noexcept;

/// Deletes the objects that still have no owner, and forgets the others.
void deleteUnattached() noexcept;

/// Offers a new object to its owner: `offer(object)` says whether the owner accepted it. A refused object is kept here,
/// and the observer learns `why`. Returns the object.
template <class T, class Offer>
T* attach(std::unique_ptr<T> made, Offer offer, KelImportReason why = KelImportReason::noOwner) {
    T* object = made.get();
    const bool isAccepted = offer(object);
    if (isAccepted) {
        static_cast<void>(made.release());
    } else {
        keepUnattached(std::move(made));
    }
    trace::made(*object);
    if (!isAccepted) {
        trace::refused(why, object);
    }
    return object;
}

} // namespace rose
