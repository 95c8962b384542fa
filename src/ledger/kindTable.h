#pragma once

#include "ledger/Reason.h"

#include <span>
#include <string_view>

namespace ledger {

/// What an object of a model file is to the import. Those of one subject have the same properties.
enum class Subject : std::uint8_t {
    none, ///< nothing: it is dropped
    header,
    design,
    package,
    classObject,
    attribute,
    operation,
    parameter,
    operationText,
    association,
    role,
    generalization,
    realization,
    dependency,
    classDiagram,
    classView,
    associationView,
    generalizationView,
    realizationView,
    dependencyView,
    treeView,
    noteView,
    attachView,
    label,
    diagramLabel,
};

/// What an object means to the import's reading of the objects behind it.
enum class Gate : std::uint8_t { leaves, mutes, unmutes };

struct KindRow {
    std::string_view kind;
    Subject subject;
    Reason reason; ///< of the subject `none` why it is dropped, otherwise what it is imported as
    Gate gate = Gate::leaves;
};

/// The row of a kind; one of its own for kinds that are not known.
[[nodiscard]] const KindRow& kindRow(std::string_view kind);
[[nodiscard]] std::span<const KindRow> kindRows();

} // namespace ledger
