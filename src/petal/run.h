#pragma once

namespace petal {

/// The whole program: reads the command line, does what it asks, reports a failure on standard error. Returns the
/// exit status. Sets the process's locale and ignores the signals for closed pipes and for too large files.
[[nodiscard]] int run(int argc, const char* const* argv);

} // namespace petal
