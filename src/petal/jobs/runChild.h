#pragma once

#include "petal/jobs/ImportProcess.h"

#include <sys/types.h>

namespace petal {

struct ImportTask;

/// The child's side of the connection to its parent. A descriptor of -1 means that the child keeps the inherited
/// stream.
struct ChildSide {
    pid_t parent;
    int result; // for the encoded `ImportEnd`
    int errors; // in place of standard error and standard output
    int log;    // in place of the log that the request names
};

/// Runs one import in a forked child and brings the task's files to the disk. Ends the process without the clean-up
/// that is the parent's, such as removing temporary files; if the bridge ends the process itself, handlers of `exit`
/// run.
[[noreturn]] void runChild(const ChildSide& side, ImportTask task, const Limits& limits) noexcept;

} // namespace petal
