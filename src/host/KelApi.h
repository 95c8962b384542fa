#pragma once

/// Marks the classes and functions that the repository library exports to hosts and bridges. All else is hidden in it.
#define KEL_API __attribute__((visibility("default")))
