#pragma once

/// Marks what the repository library offers to hosts and bridges; everything else stays hidden in it.
#define KEL_API __attribute__((visibility("default")))
