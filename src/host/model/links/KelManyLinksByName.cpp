#include "host/model/links/KelManyLinksByName.h"

void KelManyLinksByName::insert(KelObject& object) {
    const auto place = nodes_.try_emplace(&object, nullptr).first;
    try {
        place.value() = tree_.addNode(&object);
    } catch (...) {
        nodes_.erase(place);
        throw;
    }
    ++count_;
}

void KelManyLinksByName::erase(KelObject& object) noexcept {
    const auto place = nodes_.find(&object);
    tree_.removeNode(place->second);
    nodes_.erase(place);
    --count_;
}

KelObject* KelManyLinksByName::at(int index) const {
    const KelRBTree::Node* node = tree_.getNode(index);
    return node == nullptr ? nullptr : static_cast<KelObject*>(const_cast<void*>(KelRBTree::element(node)));
}

bool KelManyLinksByName::holds(const KelObject& object) const {
    return nodes_.contains(&object);
}

int KelManyLinksByName::indexOf(const KelObject& object) const {
    const auto place = nodes_.find(&object);
    return place == nodes_.end() ? -1 : KelRBTree::getIndex(place->second);
}

int KelManyLinksByName::indexOfName(const KelString& name, int from) const {
    const KelRBTree::Node* first = tree_.findFirstNode(&name);
    if (first == nullptr) {
        return -1;
    }
    const int index = KelRBTree::getIndex(first);
    if (index >= from) {
        return index;
    }
    // Equal names stand together, so the one at `from` is the answer or there is none.
    const KelObject* object = at(from);
    return object != nullptr && object->getName() == name ? from : -1;
}

void KelManyLinksByName::beforeRename(KelObject& object) noexcept {
    tree_.detachNode(nodes_.find(&object)->second);
}

void KelManyLinksByName::afterRename(KelObject& object) noexcept {
    tree_.attachNode(nodes_.find(&object)->second);
}
