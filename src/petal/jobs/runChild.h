#pragma once

#include "petal/jobs/ImportProcess.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace petal {

struct ImportTask;

/// The child's side of the connection to its parent. A descriptor of -1 means that the child keeps the inherited
/// stream.
struct ChildSide {
    pid_t parent;
    int result;         // for the encoded `ImportEnd`
    int errors;         // in place of standard error and standard output
    int log;            // in place of the log that the request names
    std::string marker; // a line to write to `errors` and `log` after each import
};

/// Runs imports in a forked child, until one fails or leaves the process in another state. Ends the process without the
/// clean-up that is the parent's, such as removing temporary files; if the bridge ends the process itself, handlers of
/// `exit` run.
[[noreturn]] void runChild(const ChildSide& side, std::vector<ImportTask> tasks, const Limits& limits) noexcept;

} // namespace petal
