#pragma once

#include "catalog/Database.h"
#include "catalog/Rows.h"

namespace catalog {

/// Writes the rows of a model in a catalogue as they were when they were put there, except that the rows of each table
/// are in the order of their numbers. `model` is the number of the model. Throws `DatabaseFailure`, and what the output
/// of `rows` throws. Takes time proportional to the rows, and memory to their numbers.
void copyModel(Database& database, std::int64_t model, RowWriter& rows);

/// Puts the rows of a model, as a `RowWriter` wrote them, into a catalogue, where `known` is the model of its path, or
/// null. Elements keep the numbers of those that have the same element id in `known`; all else has the numbers from
/// `free` on, which advances. Throws as `Database::put`. Takes time proportional to the rows, old and new.
void putModel(Database& database, std::string_view bytes, const KnownModel* known, Ids& free);

} // namespace catalog
