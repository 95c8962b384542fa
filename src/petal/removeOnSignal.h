#pragma once

namespace petal {

/// From now on the signals that ask the program to end (interrupt, quit, hang-up, termination) remove the file at
/// `path` before they do. The path must live until it is forgotten. Eight files are remembered at a time, more than a
/// command writes at once in its own process; further ones stay.
void removeOnSignal(const char* path);

/// Forgets the file that was remembered by this very pointer.
void keepOnSignal(const char* path);
/// Forgets all, for a forked process, whose files they are not.
void keepAllOnSignal();

} // namespace petal
