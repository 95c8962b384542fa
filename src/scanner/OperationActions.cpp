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
    {44, state.pre, &KelOperation::precondition},
    {43, state.post, &KelOperation::postcondition},
    {45, state.sem, &KelOperation::semantics},
}};

} // namespace

void createOperation(const Reading& reading) {
    give(CreateOperation, reading);
}

void setConcurrency(const Reading& reading) {
    if (state.activeObject != nullptr && state.activeObject->elementType == KelElementType::operation) {
        give(Concurrency, reading);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void setOperationVisibility(const Reading& reading) {
    if (state.aOperation != nullptr && reading.value != nullptr) {
        state.aOperation->visibility = visibilityCode(reading.value).value_or(otherVisibility);
        trace::changed(*state.aOperation, nullptr, visibilityFault(reading.value));
    }
}

void setReturnType(const Reading& reading) {
    if (state.aOperation != nullptr) {
        give(ConnectReturnType, reading);
    }
}

void expectPrecondition(const Reading&) {
    state.pre = true;
}

void expectPostcondition(const Reading&) {
    state.post = true;
}

void expectSemantics(const Reading&) {
    state.sem = true;
}

void setOperationText(const Reading& reading) {
    if (state.aOperation == nullptr || reading.value == nullptr) {
        return;
    }
    for (const PendingText& candidate : pendingTexts) {
        if (std::exchange(candidate.pending, false)) {
            state.aOperation->*candidate.text = KelString(reading.value);
            state.theSource.rule = candidate.rule;
            trace::changed(*state.aOperation);
            return;
        }
    }
}

} // namespace rose
