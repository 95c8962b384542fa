#include "builder/indexes/RelationshipIndex.h"

#include "host/model/KelClass.h"
#include "host/model/KelRelationship.h"

#include <algorithm>

namespace rose {

void RelationshipIndex::add(const KelClass& client, const KelClass& supplier, KelRelationship& relationship,
                            const PlaceOf& placeOf) {
    Pair& pair = pairs_[Ends(&client, &supplier)];
    const auto behind =
        std::partition_point(pair.relationships.begin(), pair.relationships.end(),
                             [&](const KelRelationship* other) { return placeOf(*other) < placeOf(relationship); });
    if (behind != pair.relationships.end() && *behind == &relationship) {
        return;
    }
    // One that joins among those drawn already makes the next drawing start over.
    if (behind - pair.relationships.begin() < static_cast<std::ptrdiff_t>(pair.drawn)) {
        pair.drawn = 0;
    }
    pair.relationships.insert(behind, &relationship);
}

void RelationshipIndex::remove(const KelClass& client, const KelClass& supplier,
                               KelRelationship& relationship) noexcept {
    const auto found = pairs_.find(Ends(&client, &supplier));
    if (found == pairs_.end()) {
        return;
    }
    Pair& pair = found->second;
    std::erase(pair.relationships, &relationship);
    pair.drawn = 0;
    if (pair.relationships.empty()) {
        pairs_.erase(found);
    }
}

RelationshipIndex::Pair* RelationshipIndex::find(const KelClass& client, const KelModelElement& supplier) {
    const auto found = pairs_.find(Ends(&client, &supplier));
    return found != pairs_.end() ? &found->second : nullptr;
}

} // namespace rose
