#pragma once

class KelElement;
class KelModelObject;

namespace exporter {

class JsonMembers;

/// Member "notes".
void writeNotes(const KelElement& element, JsonMembers& members);
/// Members "name", "description" and "notes".
void writeNamed(const KelModelObject& object, JsonMembers& members);

} // namespace exporter
