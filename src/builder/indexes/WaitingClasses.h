#pragma once

#include "host/model/links/KelPointerHash.h"

#include <cstddef>
#include <cstdint>
#include <tsl/robin_map.h>
#include <vector>

class KelClass;
class KelString;

namespace rose {

/// The classes that are known by name only, in the order of adding.
///
/// Any number of them may have the same name; none is renamed while it waits. Adding, searching by name and removing
/// cost O(1). The order of names is made when it is asked for: a search tree would be one cache miss after the other,
/// and most classes have left before anything needs it. Does not own the classes. Functions that allocate may throw
/// `std::bad_alloc`, and nothing has changed then.
class WaitingClasses {
public:
    [[nodiscard]] int getCount() const noexcept { return static_cast<int>(slotOf_.size()); }
    /// PRECONDITION: it does not wait.
    void add(KelClass& waiting);
    /// The first one added of that name, or null.
    [[nodiscard]] KelClass* findFirst(const KelString& name);
    /// Does nothing if the class does not wait.
    void remove(const KelClass& waiting) noexcept;
    /// All of them, by name; those of a name in the order of adding.
    [[nodiscard]] std::vector<KelClass*> byName() const;
    /// The same, and none waits any longer. Needs no memory.
    [[nodiscard]] std::vector<KelClass*> takeByName() noexcept;

private:
    using Slot = std::uint32_t;
    static constexpr Slot none = UINT32_MAX;

    struct Chain {
        Slot first;
        Slot last;
    };

    std::vector<KelClass*> classes_; // null where one has left
    std::vector<Slot> next_;         // the next one of the same hash, or none
    tsl::robin_map<const KelClass*, Slot, KelPointerHash> slotOf_;
    tsl::robin_map<std::size_t, Chain> chains_; // the slots of each name, by the name's hash
};

} // namespace rose
