#pragma once

#include "petal/Request.h"

namespace petal {

/// Writes the answer to a question of a catalogue's guide to standard output: a table for people, JSON or CSV. Throws a
/// `Failure`.
void askCatalog(const CatalogRequest& request);

} // namespace petal
