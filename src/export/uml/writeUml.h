#pragma once

#include "export/ClassKind.h"
#include "export/options.h"

#include <array>

namespace exporter {

struct ExportContext;

inline constexpr std::array umlOptions{
    Option{"flavour", "eclipse|omg|xmi21", "eclipse", "the dialect: of Eclipse, of the OMG, or XMI 2.1"},
    Option{"association-class", "fold|split", "fold",
           "a class between two associations becomes an association class again"},
    Option{"primitives", "local|uml", "local", "types such as int are types of the model, or UML's own"},
    ClassKinds::option,
};

/// Writes a model as UML 2.5 in XMI: one file. docs/uml.md says what becomes of each element.
///
/// The document is UTF-8. A character that XML cannot hold, and an invalid sequence, is written as U+FFFD and counted
/// as an omission. Throws what the output throws. The document is written while it is made; what is left out must be
/// known before, so the model is gone through twice.
void writeUml(const ExportContext& context);

} // namespace exporter
