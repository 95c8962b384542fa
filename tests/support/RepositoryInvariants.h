#pragma once

#include "host/model/KelModel.h"

#include <string>

/// What is wrong with a model after an import, or the empty text: a link that only one of its ends knows, a link to
/// an object that the model does not hold, an object held twice, scratch data left behind.
[[nodiscard]] std::string brokenInvariant(KelModel& model);
