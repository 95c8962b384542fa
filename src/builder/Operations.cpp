#include "builder/Operations.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "host/model/KelClass.h"
#include "host/model/KelOperation.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace rose {

namespace {

struct ConcurrencyRow {
    std::string_view text;
    int onOperation;
    int onClass;
};

constexpr std::array<ConcurrencyRow, 3> concurrencyCodes{{
    {"Sequential", 0, 3},
    {"Seqtial", 3, 0},
    {"Guarded", 1, 1},
}};
constexpr ConcurrencyRow anyOtherText{"", 3, 3};

const ConcurrencyRow& concurrencyOf(std::string_view text) {
    const auto* row = std::find_if(concurrencyCodes.begin(), concurrencyCodes.end(),
                                   [text](const ConcurrencyRow& at) { return at.text == text; });
    return row != concurrencyCodes.end() ? *row : anyOtherText;
}

KelImportReason whyOf(std::string_view text) {
    return &concurrencyOf(text) != &anyOtherText ? KelImportReason::none : KelImportReason::valueUnknown;
}

} // namespace

void CreateOperation(char* name) {
    auto made = std::make_unique<KelOperation>();
    made->setName(name);
    const auto offer = [](KelOperation* added) { return state.aClass != nullptr && state.aClass->addOperation(added); };
    state.aOperation = attach(std::move(made), offer, KelImportReason::noClass);
    state.keepOperation = state.aOperation;
    state.InNoteView = false;
    state.activeObject = state.aOperation;
}

void Concurrency(char* text) {
    if (text == nullptr) {
        return;
    }
    if (state.keepOperation != nullptr) {
        state.aOperation->concurrency = concurrencyOf(text).onOperation;
        trace::changed(*state.aOperation, nullptr, whyOf(text));
    } else if (state.aClass != nullptr) {
        state.aClass->concurrency = concurrencyOf(text).onClass;
        trace::changed(*state.aClass, nullptr, whyOf(text));
    }
}

} // namespace rose
