#pragma once

#include "host/model/KelObject.h"
#include "host/model/links/KelLinks.h"

class KelNote;

/// An object that can have notes, which it owns: the base of all classes except `KelNote`.
class KEL_API KelElement : public KelObject {
public:
    ~KelElement() override;

    bool addNote(KelNote* note);
    [[nodiscard]] KelLinks<KelNote> notes() const { return rareLinks<KelNote>(KelRareEnd::notes); }

protected:
    using KelObject::KelObject;
    /// The objects at a rare end of the class.
    template <class T>
    [[nodiscard]] KelLinks<T> rareLinks(KelRareEnd end) const {
        return KelLinks<T>(rareEnds_, end);
    }
};
