#pragma once

#include "units/UnitTree.h"

#include <string>

namespace fuzz {

/// What is wrong with a tree of files: one that is in it twice, or that no unit or several stand for. Empty when
/// nothing is.
[[nodiscard]] std::string treeFault(const units::UnitTree& tree);

/// What is wrong with the text that a tree is assembled to, or with what is told of where its bytes come from. The text
/// is held against one that is put together in memory, the files within each other. Empty when nothing is.
[[nodiscard]] std::string assemblyFault(const units::UnitTree& tree);

} // namespace fuzz
