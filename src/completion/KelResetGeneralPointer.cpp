#include "completion/KelResetGeneralPointer.h"

#include "host/model/KelModelObject.h"

namespace rose {

void KelResetGeneralPointer::post_process(KelObject* object, void* /*userData*/) {
    delete static_cast<KelString*>(object->generalPointer);
    if (object->isInstanceOf(KelElementType::modelObject)) {
        static_cast<KelModelObject*>(object)->toolId = 0;
    }
    object->generalPointer = nullptr;
}

} // namespace rose
