#include "builder/Operations.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "host/model/KelArgument.h"
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

constexpr auto concurrencyCodes = std::to_array<ConcurrencyRow>({
    {"Sequential", 0, 3},
    {"Seqtial", 3, 0},
    {"Guarded", 1, 1},
});
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

namespace {

bool takesTemplateArguments(const KelClass* owner) {
    return owner != nullptr && (owner->categoryType == KelClassCategoryType::parameterizedClass ||
                                owner->categoryType == KelClassCategoryType::parameterizedClassUtility);
}

/// Adds the argument to its owner, after the others.
template <class Owner>
bool append(Owner& owner, KelArgument& argument) {
    const bool added = owner.addArgument(&argument);
    argument.position = static_cast<std::int16_t>(owner.arguments().count() - 1);
    return added;
}

} // namespace

void CreateArgument(char* name) {
    auto made = std::make_unique<KelArgument>();
    made->setName(name);
    const auto offer = [](KelArgument* argument) {
        if (state.keepOperation != nullptr) {
            return append(*state.aOperation, *argument);
        }
        return takesTemplateArguments(state.aClass) && append(*state.aClass, *argument);
    };
    state.aArgument = attach(std::move(made), offer,
                             state.aClass != nullptr ? KelImportReason::takesNoArguments : KelImportReason::noClass);
    state.InNoteView = false;
    state.activeObject = state.aArgument;
}

} // namespace rose
