#pragma once

#include "builder/NoteRecord.h"

/// The records in `toBeNotes` by view number. A walk would stop at the first record of a number, so only that one
/// is kept here.
namespace rose::NoteTexts {

/// A record that has been added to `toBeNotes`.
void add(const NoteRecord& record);
/// The first record of that view number, or null.
[[nodiscard]] const NoteRecord* find(int viewId);
void clear() noexcept;

} // namespace rose::NoteTexts
