#pragma once

#include "petal/Request.h"
#include "petal/exitStatus.h"

namespace petal {

/// The commands. Each throws a `Failure` when it does not succeed.

/// Imports one file or many; the output of `import` is then a folder. Returns `success` or `checkTripped`.
[[nodiscard]] Outcome importFiles(const ImportRequest& import, const JobsRequest& jobs);
/// Puts models into a catalogue, or asks one. Returns `success`.
[[nodiscard]] Outcome catalogModels(const CatalogRequest& request);
/// Writes the outline of one file to standard output for comparisons: nothing in it comes from the file's path.
void convertToText(const TextconvRequest& request);
/// Compares two models and writes what has changed. Returns `success` or `checkTripped`.
[[nodiscard]] Outcome diffModels(const DiffRequest& request);
/// Draws the diagrams of one file or many, or lists them. Imports nothing.
void drawDiagrams(const DrawRequest& request);
void mergeReports(const MergeRequest& request);
void printFormats(const FormatsRequest& request);
void printInfo(const InfoRequest& request);
void printOptions();
void printSchema(const SchemaRequest& request);
void printSpecification();
void printUnits(const UnitsRequest& request);
/// Of petal, the bridge, the JSON forms and the libraries; as text only of the first two.
void printVersions(bool asJson);

} // namespace petal
