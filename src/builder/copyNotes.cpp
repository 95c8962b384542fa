#include "builder/copyNotes.h"

#include "builder/Unattached.h"
#include "host/model/KelElement.h"
#include "host/model/KelNote.h"

namespace rose {

void copyNotes(const KelElement& from, KelElement& to) {
    for (const KelNote* note : from.notes()) {
        attach(std::make_unique<KelNote>(*note), [&](KelNote* copy) { return to.addNote(copy); });
    }
}

} // namespace rose
