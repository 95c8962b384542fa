#include "builder/ClassLookup.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/PackageClasses.h"
#include "builder/indexes/WaitingNodes.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelDiagram.h"

#include <cstring>
#include <memory>
#include <string_view>

namespace rose {

const char* stripDoubleColon(const char* text) {
    if (std::strstr(text, "Logical View::") == nullptr) {
        return text;
    }
    constexpr std::string_view separator = "::";
    return text + std::string_view(text).rfind(separator) + separator.size();
}

char* stripDoubleColon(char* text) {
    return text + (stripDoubleColon(static_cast<const char*>(text)) - text);
}

KelClass* findAClass(const char* name, int remove) {
    const KelString wanted(name);
    if (KelClass* found = PackageClasses::find(wanted); found != nullptr) {
        return found;
    }
    auto* waiting = static_cast<KelClass*>(WaitingNodes::findFirst(state.toBeClasses, wanted));
    if (waiting != nullptr && remove != 0) {
        WaitingNodes::remove(state.toBeClasses, *waiting);
    }
    return waiting;
}

KelClass* getClassFromViewelement(KelModelObject* container, const KelString& name) {
    const ContainerIndex& index = container->elementType == KelElementType::designPackage
                                      ? indexOf(static_cast<KelDesignPackage&>(*container))
                                      : indexOf(static_cast<KelDiagram&>(*container));
    return index.firstClass(name.view());
}

KelClass* createWaitingClass(const char* name) {
    auto made = std::make_unique<KelClass>();
    made->setName(name);
    WaitingNodes::add(state.toBeClasses, *made);
    KelClass* waiting = made.release();
    trace::named(*waiting);
    return waiting;
}

} // namespace rose
