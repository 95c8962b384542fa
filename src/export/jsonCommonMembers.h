#pragma once

class KelElement;
class KelModelObject;
class KelObject;

namespace source {
class SourceMap;
}

namespace exporter {

class JsonMembers;

/// Member "notes".
void writeNotes(const KelElement& element, JsonMembers& members);
/// Members "name", "description" and "notes".
void writeNamed(const KelModelObject& object, JsonMembers& members);
/// Members "quid", "file" (not for the model's own file) and "line" of an object that has a place; `places` may be
/// null.
void writePlace(const KelObject& object, const source::SourceMap* places, JsonMembers& members);

} // namespace exporter
