#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

class KelClass;
class KelDiagram;
class KelModelElement;
class KelRelationship;

namespace rose {

/// The relationships of one kind by the classes at their two ends.
///
/// A walk through the client's relationships would find the same ones in the same order: those of a pair are kept
/// in the order in which the client has them, which is the order of their creation.
class RelationshipIndex {
public:
    /// The relationships between two classes.
    struct Pair {
        std::vector<KelRelationship*> relationships; // in the client's order
        const KelDiagram* drawnOn = nullptr;         // the diagram they were last drawn on, ...
        std::size_t drawn = 0;                       // ... and how many of them, from the first on
    };

    /// The place of a relationship among those of the client.
    using PlaceOf = std::function<int(const KelRelationship&)>;

    /// Notes a relationship between the two.
    void add(const KelClass& client, const KelClass& supplier, KelRelationship& relationship, const PlaceOf& placeOf);
    void remove(const KelClass& client, const KelClass& supplier, KelRelationship& relationship) noexcept;
    /// The relationships between the two, or null when there is none. `supplier` may be an element of any kind.
    [[nodiscard]] Pair* find(const KelClass& client, const KelModelElement& supplier);
    void clear() noexcept { pairs_.clear(); }

private:
    using Ends = std::pair<const KelModelElement*, const KelModelElement*>;

    std::map<Ends, Pair> pairs_;
};

} // namespace rose
