#include "builder/outlineOf.h"

#include "support/ImportedModel.h"
#include "support/RepositoryInvariants.h"

#include <algorithm>

std::string outlineOf(std::string_view text) {
    ImportedModel imported = ImportedModel::ofBody(text);
    if (!imported.failure.empty()) {
        return imported.failure;
    }
    if (std::string broken = brokenInvariant(imported.model); !broken.empty()) {
        return broken;
    }
    std::string outline = imported.tree();
    outline.erase(0, outline.find('\n')); // the model itself
    const std::size_t types = std::min(outline.find("\n  type "), outline.find("\n  base type "));
    outline.resize(types != std::string::npos ? types : outline.size() - 1);
    return outline;
}

std::string outlineInLogicalView(std::string_view text) {
    constexpr std::string_view logicalView = "\n  package Logical View";
    std::string outline = outlineOf("(object Class_Category \"Logical View\"\n" + std::string(text));
    return outline.starts_with(logicalView) ? outline.substr(logicalView.size()) : outline;
}
