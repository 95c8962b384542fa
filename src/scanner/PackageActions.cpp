#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/Packages.h"
#include "scanner/actionParts.h"

namespace rose {

void closePackage(const Reading&) {
    ClosePackage();
}

void createPackage(const Reading& reading) {
    state.objectMechanism = false;
    give(CreatePackage, reading);
}

void createClassDiagram(const Reading& reading) {
    state.objectMechanism = false;
    give(CreateClassDiagram, reading);
}

void enterMechanism(const Reading&) {
    state.objectMechanism = true;
}

} // namespace rose
