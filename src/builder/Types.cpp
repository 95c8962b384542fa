#include "builder/Types.h"

#include "builder/BuilderState.h"
#include "builder/ClassLookup.h"
#include "builder/ModelTypes.h"
#include "builder/Trace.h"
#include "builder/report.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

namespace rose {

void ConnectType(char* text) {
    if (text == nullptr) {
        return;
    }
    report(QEV_RRSE::ROS_I_CONNECTING_TYPE, text);
    aBaseType = findOrCreateType(stripDoubleColon(text));
    if (activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (activeObject->elementType == KelElementType::attribute) {
        aAttribute->addType(aBaseType);
        trace::changed(*aAttribute, aBaseType);
        if (shadowAttribute != nullptr) {
            shadowAttribute->addType(aBaseType);
            trace::changed(*shadowAttribute, aBaseType, KelImportReason::shadow);
        }
    } else if (activeObject->elementType == KelElementType::argument) {
        aArgument->addType(aBaseType);
        trace::changed(*aArgument, aBaseType);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

void ConnectReturnType(char* text) {
    if (aOperation == nullptr) {
        trace::refused(KelImportReason::noOperation);
        return;
    }
    aBaseType = findOrCreateType(text);
    aOperation->addReturnType(aBaseType);
    trace::changed(*aOperation, aBaseType);
}

} // namespace rose
