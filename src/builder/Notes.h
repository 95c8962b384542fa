#pragma once

namespace rose {

/// Keeps the text of the note view being read for the attach view that will refer to it.
void CreateNote(char* text);

/// Attaches the note of view `client` to the element of the current diagram whose view number `text` holds, or to
/// the diagram. Does nothing but clear its flags without a current diagram.
void addANote(char* text);

} // namespace rose
