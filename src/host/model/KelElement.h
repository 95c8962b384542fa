#pragma once

#include "host/model/KelObject.h"
#include "host/model/links/KelLinks.h"

class KelNote;

/// An object that carries notes. Owns them.
class KEL_API KelElement : public KelObject {
public:
    ~KelElement() override;

    bool addNote(KelNote* note);
    /// In the order of adding.
    [[nodiscard]] KelLinks<KelNote> notes() const { return KelLinks<KelNote>(notes_); }

protected:
    using KelObject::KelObject;

private:
    friend struct KelRelations;
    KelMany notes_;
};
