#pragma once

namespace petal {

/// From now on the signals that ask the program to end (interrupt, hang-up, termination) remove the file at `path`
/// before they do. Only one file is remembered; null forgets it. The path must live until it is forgotten.
void removeOnSignal(const char* path);

} // namespace petal
