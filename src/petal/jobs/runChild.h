#pragma once

#include "petal/jobs/ImportProcess.h"

#include <sys/types.h>

namespace petal {

struct ImportTask;

/// What a forked process has of the one that made it. Descriptors are -1 where the process keeps the streams that
/// it was born with.
struct ChildSide {
    pid_t parent;
    int result; // for the encoded `ImportEnd`
    int errors; // in place of standard error and standard output
    int log;    // in place of the log that the request names
};

/// Runs one import in a process made for it, and ends the process: without the clean-up that belongs to its parent,
/// unless the bridge ends it. The task's files are brought to the disk.
[[noreturn]] void runChild(const ChildSide& side, ImportTask task, const Limits& limits) noexcept;

} // namespace petal
