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
    aRealization = nullptr;
    aGeneral = nullptr;
    aDependency = nullptr;
    auto made = std::make_unique<KelClassDiagram>();
    aDiagram = made.get();
    report(QEV_RRSE::ROS_I_CREATING_DIAGRAM, name);
    made->setName(name);
    activeObject = aDiagram;
    attach(std::move(made), [](KelClassDiagram* diagram) { return aPackage->addDiagram(diagram); });
    InNoteView = false;
    aAssociation = nullptr;
}

void showOnDiagram(KelModelElement& element) {
    if (draw(*aDiagram, element)) {
        trace::changed(*aDiagram, &element);
    } else {
        trace::refused(KelImportReason::drawnAlready, &element, aDiagram);
    }
}

void AddToDiagram(char* name, long viewNumber) {
    const char* simpleName = stripDoubleColon(name);
    if (aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    aClass = findAClass(simpleName, 0);
    if (aClass == nullptr) {
        aClass = createWaitingClass(simpleName);
    }
    setViewNumber(*aClass, static_cast<int>(viewNumber));
    showOnDiagram(*aClass);
    activeObject = aClass;
    InNoteView = false;
}

} // namespace rose
