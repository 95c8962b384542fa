#pragma once

#include "ledger/Reason.h"

#include <span>
#include <string_view>

namespace ledger {

/// The meaning of an object of a model file for the import. Objects of one subject have the same properties.
enum class Subject : std::uint8_t {
    none, ///< no meaning: it is dropped
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

/// The effect of an object on the import of the objects after it.
enum class Gate : std::uint8_t { leaves, mutes, unmutes };

struct KindRow {
    std::string_view kind;
    Subject subject;
    Reason reason; ///< of the subject `none` why it is dropped, otherwise how it is imported
    Gate gate = Gate::leaves;
};

/// The row of a kind; unknown kinds share one.
[[nodiscard]] const KindRow& kindRow(std::string_view kind);
[[nodiscard]] std::span<const KindRow> kindRows();

} // namespace ledger
