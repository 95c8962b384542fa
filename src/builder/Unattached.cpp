#include "builder/Unattached.h"

#include "host/model/links/KelPointerHash.h"

#include <unordered_set>

namespace rose {

namespace {

// Emptied from its beginning, which this kind of set finds in constant time, however sparse it is.
std::unordered_set<KelObject*, KelPointerHash> unattached;

} // namespace

void keepUnattached(std::unique_ptr<KelObject> object) {
    unattached.insert(object.get());
    static_cast<void>(object.release());
}

void forgetUnattached(const KelObject& object) noexcept {
    if (!unattached.empty()) {
        unattached.erase(const_cast<KelObject*>(&object));
    }
}

void deleteUnattached() noexcept {
    while (!unattached.empty()) {
        KelObject* object = *unattached.begin();
        unattached.erase(unattached.begin());
        if (object->getParent() == nullptr) {
            trace::removing(*object, KelImportReason::attachedToNothing);
            delete object;
        }
    }
}

} // namespace rose
