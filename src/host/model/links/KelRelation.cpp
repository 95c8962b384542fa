#include "host/model/links/KelRelation.h"

#include "host/model/KelObject.h"
#include "host/model/links/KelDoomed.h"

#include <algorithm>

constinit const KelMany KelRareEnds::nothing;

void KelRareEnds::make(int count) {
    if (ends_ == nullptr) {
        ends_ = new KelMany[static_cast<std::size_t>(count)];
    }
}

void KelRareEnds::release() noexcept {
    delete[] ends_;
}

namespace {

/// The number of rare ends of the object's class.
int rareEndCount(const KelObject& object) {
    int count = 0;
    for (const KelRelationEnd& end : KelMetaClass::of(object.elementType).ends()) {
        const KelEndMember& member = end.isHolder ? end.relation->holderEnd : end.relation->targetEnd;
        count = std::max(count, static_cast<int>(member.rare) + 1);
    }
    return count;
}

} // namespace

const KelMany& KelRelation::many(const KelObject& object, const KelEndMember& end) noexcept {
    return end.many != nullptr ? object.*end.many : object.rareEnds_[end.rare];
}

KelMany& KelRelation::make(KelObject& object, const KelEndMember& end) {
    if (end.many != nullptr) {
        return object.*end.many;
    }
    object.rareEnds_.make(rareEndCount(object));
    return object.rareEnds_.made(end.rare);
}

void KelRelation::insert(KelObject& at, const KelEndMember& end, KelObject& object) {
    if (end.one != nullptr) {
        (at.*end.one).hold(&object);
    } else {
        make(at, end).insert(object);
    }
}

void KelRelation::erase(KelObject& at, const KelEndMember& end, KelObject& object) noexcept {
    if (end.one != nullptr) {
        (at.*end.one).hold(nullptr);
    } else {
        (end.many != nullptr ? at.*end.many : at.rareEnds_.made(end.rare)).erase(object);
    }
}

bool KelRelation::areLinked(const KelObject& holder, const KelObject& target) const {
    if (targetEnd.one != nullptr) {
        return (target.*targetEnd.one).get() == &holder;
    }
    if (holderEnd.one != nullptr) {
        return (holder.*holderEnd.one).get() == &target;
    }
    const KelMany& targets = many(holder, holderEnd);
    const KelMany& holders = many(target, targetEnd);
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
    return !distinctNames || many(holder, holderEnd).firstNamed(target.getName()) == nullptr;
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
    return mine.one != nullptr ? static_cast<int>((object.*mine.one).get() != nullptr) : many(object, mine).count();
}

KelObject* KelRelation::at(const KelObject& object, bool isHolder, int index) const {
    const KelEndMember& mine = end(isHolder);
    return mine.one != nullptr ? (object.*mine.one).get() : many(object, mine).at(index);
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
    for (int left = count(object, isHolder); left > 0; --left) {
        many(*at(object, isHolder, left - 1), end(!isHolder)).beforeRename(object);
    }
}

void KelRelation::afterRename(KelObject& object, bool isHolder) const noexcept {
    for (int left = count(object, isHolder); left > 0; --left) {
        many(*at(object, isHolder, left - 1), end(!isHolder)).afterRename(object);
    }
}

void KelRelation::expectRename(KelObject& object, bool isHolder, std::vector<KelLinkCollection*>& expecting) const {
    for (int left = count(object, isHolder); left > 0; --left) {
        many(*at(object, isHolder, left - 1), end(!isHolder)).expectRename(object, expecting);
    }
}
