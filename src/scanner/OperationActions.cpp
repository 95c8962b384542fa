#include "scanner/Actions.h"

#include "builder/BuilderState.h"
#include "builder/Operations.h"
#include "builder/Types.h"
#include "host/model/KelOperation.h"
#include "scanner/actionParts.h"
#include "scanner/propertyCodes.h"

#include <array>
#include <utility>

namespace rose {

namespace {

/// Which text of an operation a "PDL" line fills. The first flag that is set is consumed.
struct PendingText {
    int rule; ///< of the keyword that announces the text
    bool& pending;
    KelString KelOperation::*text;
};

constexpr std::array<PendingText, 3> pendingTexts{{
    {44, pre, &KelOperation::precondition},
    {43, post, &KelOperation::postcondition},
    {45, sem, &KelOperation::semantics},
}};

} // namespace

void createOperation(const Reading& reading) {
    give(CreateOperation, reading);
}

void setConcurrency(const Reading& reading) {
    if (activeObject != nullptr && activeObject->elementType == KelElementType::operation) {
        give(Concurrency, reading);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

void setOperationVisibility(const Reading& reading) {
    if (aOperation != nullptr && reading.value != nullptr) {
        aOperation->visibility = visibilityCode(reading.value).value_or(otherVisibility);
        trace::changed(*aOperation, nullptr, visibilityFault(reading.value));
    }
}

void setReturnType(const Reading& reading) {
    if (aOperation != nullptr) {
        give(ConnectReturnType, reading);
    }
}

void expectPrecondition(const Reading&) {
    pre = true;
}

void expectPostcondition(const Reading&) {
    post = true;
}

void expectSemantics(const Reading&) {
    sem = true;
}

void setOperationText(const Reading& reading) {
    if (aOperation == nullptr || reading.value == nullptr) {
        return;
    }
    for (const PendingText& candidate : pendingTexts) {
        if (std::exchange(candidate.pending, false)) {
            aOperation->*candidate.text = KelString(reading.value);
            theSource.rule = candidate.rule;
            trace::changed(*aOperation);
            return;
        }
    }
}

} // namespace rose
