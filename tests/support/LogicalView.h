#pragma once

#include "support/ImportedModel.h"

#include <span>
#include <string>

/// What an import of a logical view is expected to give, as the model's outline shows it.
struct LogicalViewRow {
    const char* what;
    const char* logicalView; // what follows the header of the category "Logical View"
    const char* outline;     // begins with a newline, so that it may stand in the table as it is printed
};

/// The lines of the outline about the packages, two blanks less indented, after a newline.
[[nodiscard]] std::string packagesOf(const ImportedModel& imported);
/// The lines of the outline about the types, likewise.
[[nodiscard]] std::string typesOf(const ImportedModel& imported);

/// Imports what follows the header of the category "Logical View".
[[nodiscard]] ImportedModel importLogicalView(std::string_view content, const ImportedModel::Choices& choices = {});

/// Imports each logical view, and expects the outline of its packages and a sound repository.
void expectPackages(std::span<const LogicalViewRow> rows);
/// Likewise for the types.
void expectTypes(std::span<const LogicalViewRow> rows, const ImportedModel::Choices& choices = {});
