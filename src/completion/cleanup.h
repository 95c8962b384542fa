#pragma once

namespace rose {

/// Ends an import, whichever way it went: frees the quids, resets the view numbers, deletes what still waits or
/// was attached to nothing, empties the lists and indexes, and closes the file. To be called with `aModel` set. Throws
/// `std::bad_alloc`, with all of that done and the model emptied, when there is no memory to walk the model.
void cleanup();

} // namespace rose
