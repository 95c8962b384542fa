#pragma once

#include <functional>

/// Runs the work on a thread with a stack of 256 KiB and waits for it: recursion to the depth of a file ends the
/// process there.
void onSmallStack(const std::function<void()>& work);
