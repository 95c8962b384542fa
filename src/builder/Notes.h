#pragma once

#include "host/bridge/KelImportObserver.h"
#include "host/text/KelString.h"

class KelElement;

namespace rose {

/// The text of a note as a note view gives it.
struct NoteRecord {
    int viewId = 0; ///< the view number of the note view
    KelString text;
    KelImportSource source; ///< of the text; only kept for an observer
};

/// Keeps the text of the note view being read for the attach view that will refer to it.
void CreateNote(char* text);

/// Attaches the note of view `client` to the element of the current diagram whose view number is in `text`, or to the
/// diagram. Does nothing but clear its flags without a current diagram.
void addANote(char* text);

/// Attaches a copy of every note of the first element to the second.
void copyNotes(const KelElement& from, KelElement& to);

/// Forgets where the records of `toBeNotes` are.
void clearNoteIndex() noexcept;

} // namespace rose
