#include "export/modelWalk.h"

#include "host/model/KelModel.h"

#include <cstddef>

namespace exporter {

namespace {

/// Where the walk stands within one object.
struct Place {
    const KelObject* object;
    std::span<const Part> partsLeft; // the first is the one being walked, once it has been started
    bool inPart = false;
    std::size_t firstObject = 0; // of the part being walked, in the row of objects in hand
    std::size_t nextObject = 0;
};

class Walk {
public:
    Walk(PartsOf partsOf, ModelVisitor& visitor) : partsOf_(partsOf), visitor_(visitor) {}

    void run(const KelObject& root) {
        enter(root);
        while (!path_.empty()) {
            if (path_.back().inPart) {
                continuePart();
            } else if (!path_.back().partsLeft.empty()) {
                startPart(path_.back());
            } else {
                const KelObject& done = *path_.back().object;
                path_.pop_back();
                visitor_.leave(done);
            }
        }
    }

private:
    void enter(const KelObject& object) {
        visitor_.enter(object);
        path_.push_back({.object = &object, .partsLeft = partsOf_(object)});
    }

    void startPart(Place& place) {
        place.firstObject = objects_.size();
        place.nextObject = place.firstObject;
        place.partsLeft.front().collect(*place.object, objects_);
        if (objects_.size() == place.firstObject) {
            place.partsLeft = place.partsLeft.subspan(1);
        } else {
            place.inPart = true;
            visitor_.startPart(place.partsLeft.front());
        }
    }

    void continuePart() {
        Place& place = path_.back();
        if (place.nextObject < objects_.size()) {
            enter(*objects_[place.nextObject++]);
        } else {
            objects_.resize(place.firstObject);
            visitor_.endPart(place.partsLeft.front());
            place.partsLeft = place.partsLeft.subspan(1);
            place.inPart = false;
        }
    }

    PartsOf partsOf_;
    ModelVisitor& visitor_;
    std::vector<Place> path_;
    std::vector<const KelObject*> objects_; // those of the parts being walked, the innermost part last
};

} // namespace

void walkModel(const KelModel& model, PartsOf partsOf, ModelVisitor& visitor) {
    Walk(partsOf, visitor).run(model);
}

} // namespace exporter
