#pragma once

#include "host/bridge/KelImportObserver.h"
#include "host/text/KelString.h"

namespace rose {

/// The text of a note as a note view gives it.
struct NoteRecord {
    int viewId = 0; // the view number of the note view
    KelString text;
    KelImportSource source; // of the text; only kept for an observer
};

} // namespace rose
