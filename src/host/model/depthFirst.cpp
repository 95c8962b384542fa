#include "host/model/depthFirst.h"

#include "host/model/KelObject.h"
#include "host/model/KelTraversalOperation.h"
#include "host/model/links/KelRelation.h"

#include <unordered_set>
#include <vector>

namespace {

/// Where the traversal stands within one object.
struct Place {
    KelObject* object;
    void* userData;
    std::size_t end = 0; // which owning end
    int part = 0;        // which object of that end comes next
};

/// The objects with several owners that have been visited.
class SharedParts {
public:
    /// Whether the traversal comes to the part for the first time.
    bool isNew(const KelObject& part) {
        const bool mayShare = part.getMetaClass().ownedEnds().size() > 1;
        return !mayShare || part.getParentCount() < 2 || visited_.insert(&part).second;
    }

private:
    std::unordered_set<const KelObject*> visited_;
};

/// The next part of the object, or null when there is none left.
KelObject* nextPart(Place& place) {
    const auto ends = place.object->getMetaClass().owningEnds();
    for (; place.end < ends.size(); ++place.end, place.part = 0) {
        const KelRelation& relation = *ends[place.end].relation;
        if (place.part < relation.count(*place.object, true)) {
            return relation.at(*place.object, true, place.part++);
        }
    }
    return nullptr;
}

} // namespace

void visitDepthFirst(KelObject& root, KelTraversalOperation& operation, void* userData, KelVisit visit) {
    std::vector<Place> path;
    SharedParts shared;
    if (visit == KelVisit::objectAndParts) {
        operation.pre_process(&root, userData);
    }
    path.push_back({&root, userData});
    while (!path.empty()) {
        if (KelObject* part = nextPart(path.back()); part != nullptr) {
            if (shared.isNew(*part)) {
                void* partData = path.back().userData;
                operation.pre_process(part, partData);
                path.push_back({part, partData});
            }
        } else {
            const Place done = path.back();
            path.pop_back();
            if (done.object != &root || visit == KelVisit::objectAndParts) {
                operation.post_process(done.object, done.userData);
            }
        }
    }
}
