#pragma once

#include "host/model/KelElementType.h"
#include "host/model/links/KelMany.h"
#include "host/model/links/KelOne.h"

#include <cstdint>

class KelObject;

/// What one end of a relation is in the objects that stand there: one link or many.
struct KelEndMember {
    KelOne KelObject::*one = nullptr; // exactly one of the two is set
    KelMany KelObject::*many = nullptr;
};

/// What holding an object means.
enum class KelHold {
    owns,          // the holder deletes it; an object has one holder of a kind, and the first keeps it
    refers,        // the holder knows it
    refersDeletes, // the holder knows it, and deleting the holder deletes it
};

/// One relation between two repository classes: who holds whom, and how each end keeps the other.
///
/// The one place where links are made and broken. Both ends always change together, so that whatever an object
/// is linked to can be reached from either side and nothing points to a deleted object.
struct KEL_API KelRelation {
    const char* name;
    KelElementType holderType;
    KelEndMember holderEnd;
    KelElementType targetType;
    KelEndMember targetEnd;
    KelHold hold = KelHold::refers;
    bool distinctNames = false; // the holder refuses a second object of a name

    /// Links the two; false when the link is refused, and then nothing has changed. Where an end holds one
    /// object only and the relation does not own, an earlier link of that end is broken. Throws `std::bad_alloc`
    /// with nothing changed but, at the most, such an earlier link.
    bool link(KelObject* holder, KelObject* target) const;
    /// As `link`, but true also when the two are linked already: for an end that holds one object.
    bool set(KelObject* holder, KelObject* target) const;
    /// Breaks the link between the two; false when there is none.
    bool unlink(KelObject* holder, KelObject* target) const noexcept;
    [[nodiscard]] bool areLinked(const KelObject& holder, const KelObject& target) const;

    /// How many objects the end of `object` holds, and the one at `index`.
    [[nodiscard]] int count(const KelObject& object, bool isHolder) const noexcept;
    [[nodiscard]] KelObject* at(const KelObject& object, bool isHolder, int index) const;
    /// Breaks every link of the object in this relation.
    void clear(KelObject& object, bool isHolder) const noexcept;
    /// Dooms everything the object holds in this relation.
    void doomTargets(KelObject& holder) const noexcept;
    /// Whether objects at this end stand in collections at the other.
    [[nodiscard]] bool collects(bool isHolder) const noexcept { return end(!isHolder).many != nullptr; }
    /// Frame a change of the name of an object that stands in collections of this relation.
    void beforeRename(KelObject& object, bool isHolder) const noexcept;
    void afterRename(KelObject& object, bool isHolder) const noexcept;

private:
    friend class KelDoomed;
    class OwnerSlot;

    [[nodiscard]] const KelEndMember& end(bool isHolder) const noexcept { return isHolder ? holderEnd : targetEnd; }
    [[nodiscard]] bool accepts(const KelObject& holder, const KelObject& target) const;
    static void insert(KelObject& at, const KelEndMember& end, KelObject& object);
    static void erase(KelObject& at, const KelEndMember& end, KelObject& object) noexcept;
    void breakEarlier(KelObject& object, bool isHolder) const noexcept;
};
