#pragma once

#include "host/KelApi.h"

#include <cstddef>
#include <string_view>

/// The hash of texts that a file chooses: it depends on a key that each process draws for itself, so that nobody can
/// write a file whose names all fall into one place of a table.
struct KEL_API KelTextHash {
    [[nodiscard]] std::size_t operator()(std::string_view text) const noexcept;
};
