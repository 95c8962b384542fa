#include "types/ReferenceCounts.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"

namespace rose {

unsigned int AttributeIsReferenced(const KelAttribute& attribute) {
    return static_cast<unsigned int>(attribute.getAssociatedClass() != nullptr) +
           static_cast<unsigned int>(attribute.getType() != nullptr) +
           static_cast<unsigned int>(attribute.roleNameMapsAsSource().count()) +
           static_cast<unsigned int>(attribute.roleNameMapsAsDestination().count()) +
           static_cast<unsigned int>(attribute.keys().count());
}

unsigned int ArgumentIsReferenced(const KelArgument& argument) {
    return static_cast<unsigned int>(argument.getOperation() != nullptr) +
           static_cast<unsigned int>(argument.getAssociatedClass() != nullptr) +
           static_cast<unsigned int>(argument.getType() != nullptr);
}

} // namespace rose
