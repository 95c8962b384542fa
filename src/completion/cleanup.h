#pragma once

namespace rose {

/// Ends an import, successful or not: frees the quids, resets the view numbers, deletes the objects that still wait or
/// were attached to nothing, empties the lists and indexes, and closes the file. PRECONDITION: `aModel` is set. Throws
/// `std::bad_alloc`, with all of that done and the model emptied, when there is no memory to traverse the model.
void cleanup();

} // namespace rose
