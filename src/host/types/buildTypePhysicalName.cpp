#include "host/types/buildTypePhysicalName.h"

#include "host/model/KelDerivedType.h"

#include <string>

KelString buildTypePhysicalName(KelDerivedType* type) {
    constexpr std::string_view prefix = "SQL_";
    std::string_view dataType = type->getDataType().view();
    if (dataType == "undefined") {
        return type->getName();
    }
    if (dataType.starts_with(prefix)) {
        dataType.remove_prefix(prefix.size());
    }
    KelString name(dataType);
    if (type->getScale() > 0) {
        name.append("(" + std::to_string(type->getLength()) + "," + std::to_string(type->getScale()) + ")");
    } else if (type->getLength() > 0 && type->getScale() == 0) {
        name.append("(" + std::to_string(type->getLength()) + ")");
    }
    return name;
}
