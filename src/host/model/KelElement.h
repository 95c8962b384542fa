#pragma once

#include "host/model/KelObject.h"
#include "host/model/links/KelLinks.h"

class KelNote;

/// An object that can have notes, which it owns: the base of all classes except `KelNote`.
class KEL_API KelElement : public KelObject {
public:
    ~KelElement() override;

    bool addNote(KelNote* note);
    [[nodiscard]] KelLinks<KelNote> notes() const { return KelLinks<KelNote>(notes_); }

protected:
    using KelObject::KelObject;

private:
    friend struct KelRelations;
    KelMany notes_;
};
