#pragma once

#include "petal/Request.h"

namespace petal {

/// The commands. Each throws a `Failure` when it does not succeed.

void importModel(const ImportRequest& request);
void printOptions();
void printSpecification();
void printVersions();

} // namespace petal
