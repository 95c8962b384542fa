#include "support/LogicalView.h"

#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

bool isTypeLine(const std::string& line) {
    return line.starts_with("  type ") || line.starts_with("  base type ");
}

/// The lines below the model's own, those of the types or all others.
std::string linesOf(const ImportedModel& imported, bool ofTypes) {
    std::istringstream tree(imported.tree());
    std::string lines = "\n";
    std::string line;
    std::getline(tree, line);
    for (bool inTypes = false; std::getline(tree, line);) {
        inTypes = isTypeLine(line) || (inTypes && line.starts_with("    "));
        if (inTypes == ofTypes) {
            lines += line.substr(2) + "\n";
        }
    }
    return lines;
}

template <class OutlineOf>
void expectRows(std::span<const LogicalViewRow> rows, const ImportedModel::Choices& choices, OutlineOf outlineOf) {
    for (const LogicalViewRow& row : rows) {
        SCOPED_TRACE(row.what);
        ImportedModel imported = importLogicalView(row.logicalView, choices);
        EXPECT_EQ(imported.failure, "");
        EXPECT_EQ(outlineOf(imported), row.outline);
        EXPECT_EQ(brokenInvariant(imported.model), "");
    }
}

} // namespace

std::string packagesOf(const ImportedModel& imported) {
    return linesOf(imported, false);
}

std::string typesOf(const ImportedModel& imported) {
    return linesOf(imported, true);
}

ImportedModel importLogicalView(std::string_view content, const ImportedModel::Choices& choices) {
    return ImportedModel::ofBody("(object Class_Category \"Logical View\"\n" + std::string(content), choices);
}

void expectPackages(std::span<const LogicalViewRow> rows) {
    expectRows(rows, {}, packagesOf);
}

void expectTypes(std::span<const LogicalViewRow> rows, const ImportedModel::Choices& choices) {
    expectRows(rows, choices, typesOf);
}
