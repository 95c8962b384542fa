#include "support/RepositoryInvariants.h"

#include "host/model/KelModelObject.h"
#include "host/model/KelTraversalOperation.h"
#include "host/model/links/KelRelation.h"

#include <set>

namespace {

class Collecting final : public KelTraversalOperation {
public:
    void post_process(KelObject* object, void* /*userData*/) override {
        if (!objects.insert(object).second) {
            repeated = object;
        }
    }
    std::set<const KelObject*> objects;
    const KelObject* repeated = nullptr;
};

std::string describe(const KelObject& object) {
    return std::string(object.getMetaClass().getClassName()) + " \"" + std::string(object.getName().view()) + "\"";
}

/// Looks at one end of one relation of the object.
std::string brokenEnd(const KelObject& object, const KelRelationEnd& end, const std::set<const KelObject*>& held) {
    std::set<const KelObject*> others;
    for (int index = 0; index < end.relation->count(object, end.isHolder); ++index) {
        const KelObject* other = end.relation->at(object, end.isHolder, index);
        const std::string where = describe(object) + " at " + end.relation->name;
        if (other == nullptr || !held.contains(other)) {
            return where + " refers to an object that is not in the model";
        }
        if (!others.insert(other).second) {
            return where + " holds an object twice";
        }
        bool isKnown = false;
        for (int back = 0; back < end.relation->count(*other, !end.isHolder) && !isKnown; ++back) {
            isKnown = end.relation->at(*other, !end.isHolder, back) == &object;
        }
        if (!isKnown) {
            return where + " is not known to " + describe(*other);
        }
    }
    return "";
}

} // namespace

std::string brokenInvariant(KelModel& model) {
    Collecting collecting;
    model.depthTraversal(collecting, nullptr);
    if (collecting.repeated != nullptr) {
        return describe(*collecting.repeated) + " has two owners";
    }
    for (const KelObject* object : collecting.objects) {
        if (object->generalPointer != nullptr) {
            return describe(*object) + " has its general pointer set";
        }
        if (object->isInstanceOf(KelElementType::modelObject) &&
            static_cast<const KelModelObject*>(object)->toolId != 0) {
            return describe(*object) + " has a tool identifier";
        }
        if (object != &model && object->getParent() == nullptr) {
            return describe(*object) + " has no owner";
        }
        for (const KelRelationEnd& end : object->getMetaClass().ends()) {
            if (std::string broken = brokenEnd(*object, end, collecting.objects); !broken.empty()) {
                return broken;
            }
        }
    }
    return "";
}
