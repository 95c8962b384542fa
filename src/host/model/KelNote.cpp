#include "host/model/KelNote.h"

#include "host/model/KelElement.h"

KelNote::KelNote() : KelObject(KelElementType::note) {}

KelNote::KelNote(const KelNote& other) : KelNote() {
    setFrom(other);
}

KelNote& KelNote::operator=(const KelNote& other) {
    if (this != &other) {
        setFrom(other);
    }
    return *this;
}

KelNote::~KelNote() {
    dissolve();
}

KelElement* KelNote::getElement() const {
    return static_cast<KelElement*>(element_.get());
}
