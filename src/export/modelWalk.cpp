#include "export/modelWalk.h"

#include "export/words.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelKey.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exporter {

namespace {

using enum KelElementType;

/// The collections could hold objects of other classes, which no import makes.
bool isElement(const KelObject* object) {
    return kindWord(object->elementType) != nullptr;
}

/// Collects the elements that `links` of an `Owner` holds.
template <class Owner, auto links>
void collect(const KelObject& owner, std::vector<const KelObject*>& into) {
    for (const KelObject* object : (static_cast<const Owner&>(owner).*links)()) {
        if (isElement(object)) {
            into.push_back(object);
        }
    }
}

std::int16_t attributePosition(const KelObject* attribute) {
    return static_cast<const KelAttribute*>(attribute)->position;
}

/// By position, equal positions by name.
void collectAttributes(const KelObject& owner, std::vector<const KelObject*>& into) {
    const auto first = static_cast<std::ptrdiff_t>(into.size());
    collect<KelClass, &KelClass::attributes>(owner, into); // comes in name order
    std::ranges::stable_sort(into.begin() + first, into.end(), {}, attributePosition);
}

constexpr Part types{"types", collect<KelModel, &KelModel::types>};
constexpr Part packages{"packages", collect<KelPackage, &KelPackage::childPackages>};
constexpr Part elements{"elements", collect<KelDesignPackage, &KelDesignPackage::modelElements>};
constexpr Part diagrams{"diagrams", collect<KelDesignPackage, &KelDesignPackage::diagrams>};
constexpr Part templateArguments{"arguments", collect<KelClass, &KelClass::arguments>};
constexpr Part attributes{"attributes", collectAttributes};
constexpr Part operations{"operations", collect<KelClass, &KelClass::operations>};
constexpr Part keys{"keys", collect<KelClass, &KelClass::keys>};
constexpr Part arguments{"arguments", collect<KelOperation, &KelOperation::arguments>};
constexpr Part roles{"roles", collect<KelAssociation, &KelAssociation::associationRoles>};

constexpr std::array modelInDocument{types, packages};
constexpr std::array modelInOutline{packages, types};
constexpr std::array inPackage{packages, elements, diagrams};
constexpr std::array inClass{templateArguments, attributes, operations, keys};
constexpr std::array inOperation{arguments};
constexpr std::array inAssociation{roles};

/// The position of the walk within one object.
struct Position {
    const KelObject* object;
    std::span<const Part> partsLeft; // the first is the current one once it was started
    bool inPart = false;
    std::size_t firstObject = 0; // index into `objects_` of the first of the current part
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

    void startPart(Position& position) {
        position.firstObject = objects_.size();
        position.nextObject = position.firstObject;
        position.partsLeft.front().collect(*position.object, objects_);
        if (objects_.size() == position.firstObject) {
            position.partsLeft = position.partsLeft.subspan(1);
        } else {
            position.inPart = true;
            visitor_.startPart(position.partsLeft.front());
        }
    }

    void continuePart() {
        Position& position = path_.back();
        if (position.nextObject < objects_.size()) {
            enter(*objects_[position.nextObject++]);
        } else {
            objects_.resize(position.firstObject);
            visitor_.endPart(position.partsLeft.front());
            position.partsLeft = position.partsLeft.subspan(1);
            position.inPart = false;
        }
    }

    PartsOf partsOf_;
    ModelVisitor& visitor_;
    std::vector<Position> path_;
    std::vector<const KelObject*> objects_; // of the current parts, the innermost last
};

} // namespace

std::span<const Part> documentParts(const KelObject& owner) {
    switch (owner.elementType) {
    case model:
        return modelInDocument;
    case designPackage:
        return inPackage;
    case classObject:
        return inClass;
    case operation:
        return inOperation;
    case association:
        return inAssociation;
    default:
        return {};
    }
}

std::span<const Part> packageParts(const KelObject& owner) {
    const bool isAbove = owner.elementType == model || owner.elementType == designPackage;
    return isAbove ? documentParts(owner) : std::span<const Part>();
}

std::span<const Part> outlineParts(const KelObject& owner) {
    switch (owner.elementType) {
    case model:
        return modelInOutline;
    case operation:
        return {};
    default:
        return documentParts(owner);
    }
}

void walkModel(const KelModel& model, PartsOf partsOf, ModelVisitor& visitor) {
    Walk(partsOf, visitor).run(model);
}

} // namespace exporter
