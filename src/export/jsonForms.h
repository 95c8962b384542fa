#pragma once

#include "host/model/KelElementType.h"

#include <span>

class KelObject;

namespace exporter {

class JsonMembers;

/// How the document writes the objects of one class, apart from the objects inside them.
struct JsonForm {
    KelElementType type;
    const char* kind; // the value of the member "kind", or null for none
    void (*writeMembers)(const KelObject& object, JsonMembers& members); // those behind "id" and "kind"
};

[[nodiscard]] std::span<const JsonForm> jsonForms();
/// The form of an object that the document holds.
[[nodiscard]] const JsonForm& jsonFormOf(const KelObject& object);

} // namespace exporter
