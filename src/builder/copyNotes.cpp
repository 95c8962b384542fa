#include "builder/copyNotes.h"

#include "builder/Unattached.h"
#include "host/model/KelElement.h"
#include "host/model/KelNote.h"

namespace rose {

void copyNotes(const KelElement& from, KelElement& to) {
    for (KelNote* note : from.notes()) {
        KelNote* copy = attach(std::make_unique<KelNote>(*note), [&](KelNote* added) { return to.addNote(added); });
        trace::replaced(*note, KelImportReason::placeholder, *copy);
    }
}

} // namespace rose
