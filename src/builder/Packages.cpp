#include "builder/Packages.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"

#include <memory>

namespace rose {

namespace {

// While the file is read, a package's toolId says whether its end has been read.
constexpr int openMark = 1;
constexpr int closedMark = -1;

/// The parent of the new package, given the current one; null when there is none.
KelPackage* parentFor(const KelDesignPackage& created, KelDesignPackage* current) {
    if (current == nullptr) {
        return &created != state.logicalViewPackage ? state.logicalViewPackage : nullptr;
    }
    return current->toolId == closedMark ? current->getParentPackage() : current;
}

KelDesignPackage* asDesignPackage(KelPackage* package) {
    const bool isDesign = package != nullptr && package->elementType == KelElementType::designPackage;
    return isDesign ? static_cast<KelDesignPackage*>(package) : nullptr;
}

} // namespace

void CreatePackage(char* name) {
    const std::string_view category(name);
    if (!state.startPackages) {
        if (category != "Logical View") {
            trace::refused(KelImportReason::beforeLogicalView);
            return;
        }
        state.startPackages = true;
    }
    if (category == "Use Case View" || state.InUseCaseView > 0) {
        ++state.InUseCaseView;
        trace::refused(KelImportReason::inUseCaseView);
        return;
    }
    report(QEV_RRSE::ROS_I_CREATING_PACKAGE, category);

    auto made = std::make_unique<KelDesignPackage>();
    KelDesignPackage* created = made.get();
    KelDesignPackage* previous = state.aPackage;
    state.aPackage = created;
    if (category == "Logical View") {
        state.logicalViewPackage = created;
    }
    if (KelPackage* parent = parentFor(*created, previous); parent != nullptr) {
        parent->addChildPackage(created);
    }
    created->setName(name);
    // Refused for a package that has a parent, so only one without becomes a top-level package.
    state.aModel->addChildPackage(created);
    static_cast<void>(made.release());
    trace::made(*created);
    state.packages.add(created, true, nullptr);
    created->toolId = openMark;
    state.activeObject = created;
    state.InNoteView = false;
    state.aDiagram = nullptr;
}

void ClosePackage() {
    if (state.InUseCaseView > 0) {
        --state.InUseCaseView;
    }
    if (state.aPackage == nullptr) {
        return;
    }
    if (state.aPackage->toolId == closedMark) {
        state.aPackage = asDesignPackage(state.aPackage->getParentPackage());
    }
    if (state.aPackage != nullptr) {
        state.aPackage->toolId = closedMark;
    }
}

} // namespace rose
