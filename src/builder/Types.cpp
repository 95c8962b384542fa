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
    state.aBaseType = findOrCreateType(stripDoubleColon(text));
    if (state.activeObject == nullptr) {
        trace::refused(KelImportReason::nothingActive);
        return;
    }
    if (state.activeObject->elementType == KelElementType::attribute) {
        state.aAttribute->addType(state.aBaseType);
        trace::changed(*state.aAttribute, state.aBaseType);
        if (state.shadowAttribute != nullptr) {
            state.shadowAttribute->addType(state.aBaseType);
            trace::changed(*state.shadowAttribute, state.aBaseType, KelImportReason::shadow);
        }
    } else if (state.activeObject->elementType == KelElementType::argument) {
        state.aArgument->addType(state.aBaseType);
        trace::changed(*state.aArgument, state.aBaseType);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void ConnectReturnType(char* text) {
    if (state.aOperation == nullptr) {
        trace::refused(KelImportReason::noOperation);
        return;
    }
    state.aBaseType = findOrCreateType(text);
    state.aOperation->addReturnType(state.aBaseType);
    trace::changed(*state.aOperation, state.aBaseType);
}

} // namespace rose
