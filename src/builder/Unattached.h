#pragma once

#include "builder/Trace.h"
#include "host/model/KelObject.h"

#include <memory>

namespace rose {

/// Holds an object that nothing has accepted. `deleteUnattached` deletes it unless it has found an owner by then.
void keepUnattached(std::unique_ptr<KelObject> object);

/// Stops holding the object, which has an owner now or is being deleted.
void forgetUnattached(const KelObject& object) noexcept;

/// Deletes the objects held that still have no owner, and forgets the others.
void deleteUnattached() noexcept;

/// Offers a new object to its owner: `offer(object)` says whether that accepted it; else the object is held here, and
/// `why` says for what reason.
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
