#include "builder/indexes/Containers.h"

#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"
#include "host/model/KelModelElement.h"

#include <optional>
#include <unordered_map>

namespace rose {

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
