#include "builder/ModelTypes.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"

#include <memory>

namespace rose {

KelType* findType(const KelString& name) {
    return state.aModel->types().findNamed(name);
}

KelType* findOrCreateType(const char* name) {
    const KelString wanted(name);
    if (KelType* found = findType(wanted); found != nullptr) {
        return found;
    }
    auto made = std::make_unique<KelDerivedType>();
    made->setName(wanted);
    made->userDefined = true;
    return attach(std::move(made), [](KelDerivedType* type) { return state.aModel->addType(type); });
}

} // namespace rose
