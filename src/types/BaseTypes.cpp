#include "types/BaseTypes.h"

#include "host/text/KelString.h"
#include "host/types/createBaseType.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace rose {

KelBaseType* undefined = nullptr;
KelBaseType* charBase = nullptr;
KelBaseType* intBase = nullptr;
KelBaseType* numberBase = nullptr;
KelBaseType* binBase = nullptr;

namespace {

struct BaseRow {
    std::string_view logicalName;
    KelBaseType** base;
};

constexpr std::array<BaseRow, 4> bases{{
    {"undefined", &undefined},
    {"char", &charBase},
    {"int", &intBase},
    {"number", &numberBase},
}};

} // namespace

KelBaseType* getBaseType(const char* sqlDataType) {
    const std::string_view logicalName = getDefaultLogicalName(sqlDataType);
    const auto* row =
        std::find_if(bases.begin(), bases.end(), [&](const BaseRow& at) { return at.logicalName == logicalName; });
    return row != bases.end() ? *row->base : binBase;
}

} // namespace rose
