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
    if (toBeClasses.getCount() == 0) {
        return;
    }
    KelDesignPackage* home = attach(std::make_unique<KelDesignPackage>(),
                                    [](KelDesignPackage* made) { return aModel->addChildPackage(made); });
    home->setName("Use Case Classes in Class Diagrams");
    while (const void* waiting = toBeClasses[0]) {
        aClass = static_cast<KelClass*>(const_cast<void*>(waiting));
        home->addModelElement(aClass);
        trace::repaired(*aClass, KelImportReason::onlyNamed, home);
        WaitingNodes::remove(toBeClasses, *aClass);
    }
}

bool findClassInRemainingFoodStuffs(const KelString& name) {
    report(QEV_RRSE::ROS_I_CLASS_NAME_TO_BE_FOUND, name.view());
    return WaitingNodes::findFirst(toBeClasses, name) != nullptr;
}

} // namespace rose
