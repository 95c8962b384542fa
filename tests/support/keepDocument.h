#pragma once

#include <string_view>

/// Keeps what petal wrote, if it is JSON, as a file in the folder that the environment variable PETAL_DOCUMENTS names;
/// does nothing without one. The test `schemas` holds these files against their schemas.
void keepDocument(std::string_view text);
