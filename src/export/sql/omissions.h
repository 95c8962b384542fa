#pragma once

class KelModel;

namespace exporter {
class Omissions;
}

namespace exporter::sql {

/// Adds what tables have no place for, whatever the choices: operations, diagrams, flags ... Classes, attributes, keys
/// and associations are left to `makeSchema`.
void addOmissions(const KelModel& model, Omissions& omissions);

} // namespace exporter::sql
