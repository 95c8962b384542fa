#pragma once

#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <map>
#include <set>
#include <tsl/robin_map.h>
#include <utility>

class KelClass;
class KelDiagram;
class KelModelElement;

namespace rose {

/// The relationships of one kind by the classes at their two ends.
///
/// Lookups return what a linear search of the client's relationships would return. Relationships are first bound in the
/// order of their creation, so sorting a pair's entries by first binding gives the client's order. Each operation on
/// one relationship costs O(log n).
template <class Relationship>
class RelationshipIndex {
public:
    /// Notes a relationship between the two; does nothing if it is noted already.
    void add(const KelClass& client, const KelClass& supplier, Relationship& relationship) {
        const auto [known, isNew] = orders_.try_emplace(&relationship, next_);
        next_ += isNew ? 1 : 0;
        Pair& pair = pairs_[Ends(&client, &supplier)];
        const Entry entry(known->second, &relationship);
        if (pair.all.insert(entry).second) {
            pair.undrawn.insert(entry);
        }
    }

    /// Removes the relationship from the two. Does nothing if it is not between them; either may be null.
    void remove(const KelClass* client, const KelClass* supplier, Relationship& relationship) noexcept {
        const auto found = pairs_.find(Ends(client, supplier));
        const auto known = orders_.find(&relationship);
        if (found == pairs_.end() || known == orders_.end()) {
            return;
        }
        const Entry entry(known->second, &relationship);
        found->second.all.erase(entry);
        found->second.undrawn.erase(entry);
        if (found->second.all.empty()) {
            pairs_.erase(found);
        }
    }

    /// Forgets a relationship that is being deleted. PRECONDITION: it was removed from all pairs.
    void forget(const Relationship& relationship) noexcept { orders_.erase(&relationship); }

    /// The first relationship between the two, or null.
    [[nodiscard]] Relationship* first(const KelClass& client, const KelClass& supplier) const {
        const auto found = pairs_.find(Ends(&client, &supplier));
        return found != pairs_.end() ? found->second.all.begin()->second : nullptr;
    }

    /// Calls `draw` for every relationship between the two that this has not drawn on the diagram before, in their
    /// order. Returns the last of all between the two, or null when there is none. `supplier` may be an element of
    /// any kind.
    template <class Draw>
    Relationship* drawAll(const KelClass& client, const KelModelElement& supplier, const KelDiagram& diagram,
                          Draw draw) {
        const auto found = pairs_.find(Ends(&client, &supplier));
        if (found == pairs_.end()) {
            return nullptr;
        }
        Pair& pair = found->second;
        for (const Entry& entry : pair.drawnOn == &diagram ? pair.undrawn : pair.all) {
            draw(*entry.second);
        }
        pair.drawnOn = &diagram;
        pair.undrawn.clear();
        return pair.all.rbegin()->second;
    }

    void clear() noexcept {
        pairs_.clear();
        orders_.clear();
        next_ = 0;
    }

private:
    using Ends = std::pair<const void*, const void*>; // a client and a supplier
    using Order = std::uint64_t;                      // of being bound for the first time
    using Entry = std::pair<Order, Relationship*>;

    struct Pair {
        std::set<Entry> all;
        const KelDiagram* drawnOn = nullptr; // the diagram they were last drawn on, ...
        std::set<Entry> undrawn;             // ... and those that joined since then
    };

    std::map<Ends, Pair> pairs_;
    tsl::robin_map<const Relationship*, Order, KelPointerHash> orders_;
    Order next_ = 0;
};

} // namespace rose
