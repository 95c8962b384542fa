#include "builder/ClassDiagrams.h"

#include "builder/BuilderState.h"
#include "builder/ClassLookup.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/Containers.h"
#include "builder/report.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"

#include <memory>

namespace rose {

void CreateClassDiagram(char* name) {
    state.aRealization = nullptr;
    state.aGeneral = nullptr;
    state.aDependency = nullptr;
    auto made = std::make_unique<KelClassDiagram>();
    state.aDiagram = made.get();
    report(QEV_RRSE::ROS_I_CREATING_DIAGRAM, name);
    made->setName(name);
    state.activeObject = state.aDiagram;
    attach(std::move(made), [](KelClassDiagram* diagram) { return state.aPackage->addDiagram(diagram); });
    state.InNoteView = false;
    state.aAssociation = nullptr;
}

void showOnDiagram(KelModelElement& element) {
    if (draw(*state.aDiagram, element)) {
        trace::changed(*state.aDiagram, &element);
    } else {
        trace::refused(KelImportReason::drawnAlready, &element, state.aDiagram);
    }
}

void AddToDiagram(char* name, long viewNumber) {
    const char* simpleName = stripDoubleColon(name);
    if (state.aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    state.aClass = findAClass(simpleName, 0);
    if (state.aClass == nullptr) {
        state.aClass = createWaitingClass(simpleName);
    }
    setViewNumber(*state.aClass, static_cast<int>(viewNumber));
    showOnDiagram(*state.aClass);
    state.activeObject = state.aClass;
    state.InNoteView = false;
}

} // namespace rose
