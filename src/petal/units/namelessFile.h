#pragma once

namespace petal {

/// Opens an empty file for reading and writing that has no name, in the folder for temporary files, and is gone once
/// it is closed, however the program ends. It can be opened again under /proc/self/fd. The caller closes it. Throws
/// `std::system_error`.
[[nodiscard]] int openNamelessFile();

} // namespace petal
