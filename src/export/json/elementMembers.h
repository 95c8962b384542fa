#pragma once

class KelObject;

namespace exporter {

class JsonMembers;

/// Writes the members of an element that do not contain other elements: "kind", if its class has one, and those after
/// it. For the members that contain elements see `documentParts`. Throws what the output throws.
void writeMembers(const KelObject& element, JsonMembers& members);

} // namespace exporter
