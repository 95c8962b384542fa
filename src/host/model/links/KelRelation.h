#pragma once

#include "host/model/KelElementType.h"
#include "host/model/links/KelMany.h"
#include "host/model/links/KelOne.h"

#include <cstdint>

class KelObject;

/// The data member that is one end of a relation: for one object, or for many, which have a member of their own or are
/// among the rare ends.
struct KelEndMember {
    KelOne KelObject::*one = nullptr; // exactly one of the three is set
    KelMany KelObject::*many = nullptr;
    KelRareEnd rare = KelRareEnd::none;

    [[nodiscard]] bool isOne() const noexcept { return one != nullptr; }
};

/// The kind of a relation: the consequences of holding a target.
enum class KelHold {
    owns,          // deleting the holder deletes the target, which has at most one such holder: the first
    refers,        // deleting either breaks the link
    refersDeletes, // as `refers`, but deleting the holder deletes the target
};

/// One relation between two repository classes: which of them holds the other, and the data members at both ends.
///
/// Links are made and broken only here. Both ends always change together, so that each link can be followed from either
/// side and none leads to a deleted object. Relations are constants (KelRelations.h) and own nothing themselves;
/// errors, threads and cost are those of `KelObject`.
struct KEL_API KelRelation {
    const char* name;
    KelElementType holderType;
    KelEndMember holderEnd;
    KelElementType targetType;
    KelEndMember targetEnd;
    KelHold hold = KelHold::refers;
    bool distinctNames = false; // the holder refuses a second object of a name

    /// Links the two. False when the link is refused; nothing has changed then. Refused are null, two objects that are
    /// linked already, a target that has an owner in an owning relation, a circle of owners, and, with `distinctNames`,
    /// a target whose name another one has. In other relations an end for one object drops its earlier link. If this
    /// throws `std::bad_alloc`, only such an earlier link may be gone.
    bool link(KelObject* holder, KelObject* target) const;
    /// As `link`, but also true when the two are linked already.
    bool set(KelObject* holder, KelObject* target) const;
    /// Breaks the link between the two; false when there is none.
    bool unlink(KelObject* holder, KelObject* target) const noexcept;
    /// Whether the two are linked. O(1) where an end holds one object; otherwise it asks the smaller collection.
    [[nodiscard]] bool areLinked(const KelObject& holder, const KelObject& target) const;

    /// The number of objects at the end of `object`, and the one at `index`. `isHolder` selects the end.
    [[nodiscard]] int count(const KelObject& object, bool isHolder) const noexcept;
    [[nodiscard]] KelObject* at(const KelObject& object, bool isHolder, int index) const;
    /// The end for many of `object`. Valid until the object gets its first link at a rare end. Precondition: the end is
    /// for many.
    [[nodiscard]] static const KelMany& many(const KelObject& object, const KelEndMember& end) noexcept;
    /// Breaks every link of the object in this relation.
    void clear(KelObject& object, bool isHolder) const noexcept;
    /// Dooms all targets of the holder (`KelDoomed::add`).
    void doomTargets(KelObject& holder) const noexcept;
    /// Whether the other end is a collection, which then contains objects of this end.
    [[nodiscard]] bool collects(bool isHolder) const noexcept { return !end(!isHolder).isOne(); }
    /// Called before and after a change of the name of an object. Precondition: `collects(isHolder)`.
    void beforeRename(KelObject& object, bool isHolder) const noexcept;
    void afterRename(KelObject& object, bool isHolder) const noexcept;
    /// Announces the change to the collections, and adds to `expecting` those to be told when it is done.
    void expectRename(KelObject& object, bool isHolder, std::vector<KelLinkCollection*>& expecting) const;

private:
    friend class KelDoomed;
    class OwnerSlot;

    [[nodiscard]] const KelEndMember& end(bool isHolder) const noexcept { return isHolder ? holderEnd : targetEnd; }
    [[nodiscard]] bool accepts(const KelObject& holder, const KelObject& target) const;
    /// The same end, to be changed; `make` makes a rare end if need be.
    [[nodiscard]] static KelMany& make(KelObject& object, const KelEndMember& end);
    static void insert(KelObject& at, const KelEndMember& end, KelObject& object);
    static void erase(KelObject& at, const KelEndMember& end, KelObject& object) noexcept;
    void breakEarlier(KelObject& object, bool isHolder) const noexcept;
};
