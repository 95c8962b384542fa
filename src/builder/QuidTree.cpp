#include "builder/QuidTree.h"

#include "host/model/KelAssociation.h"

#include <cstring>

namespace rose {

namespace {

const KelAssociation& associationOf(const void* element) {
    return *static_cast<const KelAssociation*>(element);
}

const char* sortText(const KelAssociation& association) {
    const auto* quid = static_cast<const KelString*>(association.generalPointer);
    return quid != nullptr ? quid->text() : association.getName().text();
}

} // namespace

int QuidTree::compare2Object(const void* left, const void* right) const {
    const KelAssociation& first = associationOf(left);
    const KelAssociation& second = associationOf(right);
    if (first.generalPointer != nullptr && second.generalPointer != nullptr) {
        return std::strcmp(sortText(first), sortText(second));
    }
    return std::strcmp(first.getName().text(), second.getName().text());
}

int QuidTree::compare2Key(const void* element, const void* key) const {
    return std::strcmp(sortText(associationOf(element)), static_cast<const KelString*>(key)->text());
}

} // namespace rose
