#pragma once

#include "host/text/KelString.h"

namespace rose {

/// The text of a note as a note view gives it.
struct NoteRecord {
    int viewId = 0; // the view number of the note view
    KelString text;
};

} // namespace rose
