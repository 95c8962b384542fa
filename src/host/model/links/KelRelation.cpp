#include "host/model/links/KelRelation.h"

#include "host/model/KelObject.h"
#include "host/model/links/KelDoomed.h"

void KelRelation::insert(KelObject& at, const KelEndMember& end, KelObject& object) {
    if (end.one != nullptr) {
        (at.*end.one).hold(&object);
    } else {
        (at.*end.many).insert(object);
    }
}

void KelRelation::erase(KelObject& at, const KelEndMember& end, KelObject& object) noexcept {
    if (end.one != nullptr) {
        (at.*end.one).hold(nullptr);
    } else {
        (at.*end.many).erase(object);
    }
}

bool KelRelation::areLinked(const KelObject& holder, const KelObject& target) const {
    if (targetEnd.one != nullptr) {
        return (target.*targetEnd.one).get() == &holder;
    }
    if (holderEnd.one != nullptr) {
        return (holder.*holderEnd.one).get() == &target;
    }
    const KelMany& targets = holder.*holderEnd.many;
    const KelMany& holders = target.*targetEnd.many;
    return targets.count() <= holders.count() ? targets.holds(target) : holders.holds(holder);
}

bool KelRelation::accepts(const KelObject& holder, const KelObject& target) const {
    if (areLinked(holder, target)) {
        return false;
    }
    if (hold == KelHold::owns) {
        if ((target.*targetEnd.one).get() != nullptr) {
            return false;
        }
        // A target that owns nothing in this relation cannot close a circle, so most links skip the search.
        const bool mayCircle = &holder == &target || (holderType == targetType && count(target, true) > 0);
        for (const KelObject* above = &holder; mayCircle && above != nullptr; above = above->getParent()) {
            if (above == &target) {
                return false;
            }
        }
    }
    return !distinctNames || (holder.*holderEnd.many).firstNamed(target.getName()) == nullptr;
}

void KelRelation::breakEarlier(KelObject& object, bool isHolder) const noexcept {
    if (end(isHolder).one != nullptr && count(object, isHolder) > 0) {
        clear(object, isHolder);
    }
}

bool KelRelation::link(KelObject* holder, KelObject* target) const {
    if (holder == nullptr || target == nullptr || !accepts(*holder, *target)) {
        return false;
    }
    breakEarlier(*holder, true);
    breakEarlier(*target, false);
    insert(*holder, holderEnd, *target);
    try {
        insert(*target, targetEnd, *holder);
    } catch (...) {
        erase(*holder, holderEnd, *target);
        throw;
    }
    return true;
}

bool KelRelation::set(KelObject* holder, KelObject* target) const {
    return link(holder, target) || (holder != nullptr && target != nullptr && areLinked(*holder, *target));
}

bool KelRelation::unlink(KelObject* holder, KelObject* target) const noexcept {
    if (holder == nullptr || target == nullptr || !areLinked(*holder, *target)) {
        return false;
    }
    erase(*holder, holderEnd, *target);
    erase(*target, targetEnd, *holder);
    return true;
}

int KelRelation::count(const KelObject& object, bool isHolder) const noexcept {
    const KelEndMember& mine = end(isHolder);
    return mine.one != nullptr ? static_cast<int>((object.*mine.one).get() != nullptr) : (object.*mine.many).count();
}

KelObject* KelRelation::at(const KelObject& object, bool isHolder, int index) const {
    const KelEndMember& mine = end(isHolder);
    return mine.one != nullptr ? (object.*mine.one).get() : (object.*mine.many).at(index);
}

void KelRelation::clear(KelObject& object, bool isHolder) const noexcept {
    for (int left = count(object, isHolder); left > 0; --left) {
        KelObject* other = at(object, isHolder, left - 1);
        erase(object, end(isHolder), *other);
        erase(*other, end(!isHolder), object);
    }
}

void KelRelation::doomTargets(KelObject& holder) const noexcept {
    for (int left = count(holder, true); left > 0; --left) {
        KelDoomed::add(*at(holder, true, left - 1));
    }
}

void KelRelation::beforeRename(KelObject& object, bool isHolder) const noexcept {
    KelMany KelObject::*const collection = end(!isHolder).many;
    for (int left = count(object, isHolder); left > 0; --left) {
        (at(object, isHolder, left - 1)->*collection).beforeRename(object);
    }
}

void KelRelation::afterRename(KelObject& object, bool isHolder) const noexcept {
    KelMany KelObject::*const collection = end(!isHolder).many;
    for (int left = count(object, isHolder); left > 0; --left) {
        (at(object, isHolder, left - 1)->*collection).afterRename(object);
    }
}

void KelRelation::expectRename(KelObject& object, bool isHolder, std::vector<KelLinkCollection*>& expecting) const {
    KelMany KelObject::*const collection = end(!isHolder).many;
    for (int left = count(object, isHolder); left > 0; --left) {
        (at(object, isHolder, left - 1)->*collection).expectRename(object, expecting);
    }
}
