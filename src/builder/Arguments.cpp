#include "builder/Arguments.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "host/model/KelArgument.h"
#include "host/model/KelClass.h"
#include "host/model/KelOperation.h"

#include <memory>

namespace rose {

namespace {

bool takesTemplateArguments(const KelClass* owner) {
    return owner != nullptr && (owner->categoryType == KelClassCategoryType::parameterizedClass ||
                                owner->categoryType == KelClassCategoryType::parameterizedClassUtility);
}

/// Adds the argument to its owner at the place behind those the owner has.
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
