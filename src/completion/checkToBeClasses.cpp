#include "completion/checkToBeClasses.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/WaitingNodes.h"
#include "builder/report.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModel.h"

#include <memory>

namespace rose {

void checkToBeClasses() {
    if (state.toBeClasses.getCount() == 0) {
        return;
    }
    KelDesignPackage* home = attach(std::make_unique<KelDesignPackage>(),
                                    [](KelDesignPackage* made) { return state.aModel->addChildPackage(made); });
    home->setName("Use Case Classes in Class Diagrams");
    while (const void* waiting = state.toBeClasses[0]) {
        state.aClass = static_cast<KelClass*>(const_cast<void*>(waiting));
        home->addModelElement(state.aClass);
        trace::repaired(*state.aClass, KelImportReason::onlyNamed, home);
        WaitingNodes::remove(state.toBeClasses, *state.aClass);
    }
}

bool findClassInRemainingFoodStuffs(const KelString& name) {
    report(QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND, name.view());
    return WaitingNodes::findFirst(state.toBeClasses, name) != nullptr;
}

} // namespace rose
