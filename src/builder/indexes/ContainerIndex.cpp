#include "builder/indexes/ContainerIndex.h"

#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelModelElement.h"

#include <iterator>
#include <limits>
#include <optional>
#include <unordered_map>

namespace rose {

namespace {

bool isClass(const KelModelElement& element) {
    return element.elementType == KelElementType::classObject;
}

/// Gives the entry of that key and order, if there is one, another key.
template <class Entries, class Key>
void rekey(Entries& entries, const typename Entries::value_type& old, const Key& key) noexcept {
    auto node = entries.extract(old);
    if (!node.empty()) {
        node.value().key = key;
        entries.insert(std::move(node));
    }
}

template <class Entries, class Key>
KelClass* firstOf(const Entries& entries, const Key& key) {
    const auto found = entries.lower_bound({key, 0, nullptr});
    return found != entries.end() && found->key == key ? static_cast<KelClass*>(found->element) : nullptr;
}

} // namespace

void ContainerIndex::add(KelModelElement& element) {
    const Order order = next_++;
    orders_.emplace(&element, order);
    byNumber_.insert({element.toolId, order, &element});
    if (isClass(element)) {
        classesByNumber_.insert({element.toolId, order, &element});
        classesByName_.insert({element.getName().view(), order, &element});
    }
}

void ContainerIndex::remove(KelModelElement& element) noexcept {
    const auto found = orders_.find(&element);
    if (found == orders_.end()) {
        return;
    }
    const Order order = found->second;
    orders_.erase(found);
    byNumber_.erase({element.toolId, order, &element});
    classesByNumber_.erase({element.toolId, order, &element});
    classesByName_.erase({element.getName().view(), order, &element});
}

void ContainerIndex::renumber(KelModelElement& element, int viewNumber) noexcept {
    const auto found = orders_.find(&element);
    if (found != orders_.end()) {
        rekey(byNumber_, {element.toolId, found->second, &element}, viewNumber);
        rekey(classesByNumber_, {element.toolId, found->second, &element}, viewNumber);
    }
}

ContainerIndex::Place ContainerIndex::first(int viewNumber) const {
    const auto found = byNumber_.lower_bound({viewNumber, 0, nullptr});
    return found != byNumber_.end() && found->key == viewNumber ? Place{found->order, found->element} : Place{};
}

ContainerIndex::Place ContainerIndex::lastBefore(int viewNumber, const Place& place) const {
    const auto found = std::prev(byNumber_.lower_bound({viewNumber, place.order, nullptr}));
    return {found->order, found->element};
}

KelClass* ContainerIndex::firstClass(int viewNumber) const {
    return firstOf(classesByNumber_, viewNumber);
}

KelClass* ContainerIndex::firstClass(std::string_view name) const {
    return firstOf(classesByName_, name);
}

namespace {

const KelDiagram* indexedDiagram = nullptr;
std::optional<ContainerIndex> diagramIndex; // of indexedDiagram
std::unordered_map<const KelDesignPackage*, ContainerIndex> packageIndexes;

/// An index of everything the container holds now.
template <class Container>
ContainerIndex makeIndex(const Container& container) {
    ContainerIndex made;
    for (KelModelElement* element : container.modelElements()) {
        made.add(*element);
    }
    return made;
}

/// Applies the change to every index that may hold the element.
template <class Change>
void changeIndexes(const KelModelElement& element, Change change) noexcept {
    if (diagramIndex) {
        change(*diagramIndex);
    }
    if (!packageIndexes.empty()) {
        const auto found = packageIndexes.find(element.getDesignPackage());
        if (found != packageIndexes.end()) {
            change(found->second);
        }
    }
}

} // namespace

bool draw(KelDiagram& diagram, KelModelElement& element) {
    if (!diagram.addModelElement(&element)) {
        return false;
    }
    if (indexedDiagram == &diagram) {
        diagramIndex->add(element);
    }
    return true;
}

bool place(KelDesignPackage& package, KelModelElement& element) {
    if (!package.addModelElement(&element)) {
        return false;
    }
    const auto found = packageIndexes.find(&package);
    if (found != packageIndexes.end()) {
        found->second.add(element);
    }
    return true;
}

void setViewNumber(KelModelObject& object, int viewNumber) {
    if (object.toolId == viewNumber) {
        return;
    }
    if (object.isInstanceOf(KelElementType::modelElement)) {
        auto& element = static_cast<KelModelElement&>(object);
        changeIndexes(element, [&](ContainerIndex& index) { index.renumber(element, viewNumber); });
    }
    object.toolId = viewNumber;
}

const ContainerIndex& indexOf(KelDiagram& diagram) {
    if (indexedDiagram != &diagram) {
        diagramIndex = makeIndex(diagram);
        indexedDiagram = &diagram;
    }
    return *diagramIndex;
}

const ContainerIndex& indexOf(KelDesignPackage& package) {
    const auto found = packageIndexes.find(&package);
    return found != packageIndexes.end() ? found->second
                                         : packageIndexes.emplace(&package, makeIndex(package)).first->second;
}

void forgetElement(KelModelElement& element) noexcept {
    changeIndexes(element, [&](ContainerIndex& index) { index.remove(element); });
}

void clearContainerIndexes() noexcept {
    indexedDiagram = nullptr;
    diagramIndex.reset();
    packageIndexes.clear();
}

} // namespace rose
