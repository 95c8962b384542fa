#include "host/containers/KelStringList.h"

#include "host/text/KelString.h"

#include <cstring>

KelStringList::~KelStringList() = default;

int KelStringList::compare2Object(const void* left, const void* right) const {
    return std::strcmp(static_cast<const KelString*>(left)->text(), static_cast<const KelString*>(right)->text());
}

int KelStringList::compare2Key(const void* element, const void* key) const {
    return compare2Object(element, key);
}
