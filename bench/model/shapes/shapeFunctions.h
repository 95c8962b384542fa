#pragma once

namespace bench {

struct ModelWriter;

// One function for each shape; see `shapes()` for what they are.

void plain(ModelWriter& writer);
void packagesFlat(ModelWriter& writer);
void packagesNested(ModelWriter& writer);
void attributesOfOneClass(ModelWriter& writer);
void diagrams(ModelWriter& writer);
void viewsOfOneDiagram(ModelWriter& writer);
void associationsOnTenDiagrams(ModelWriter& writer);
void forwardReferences(ModelWriter& writer);
void attributesInTwoKeys(ModelWriter& writer);
void distinctTypes(ModelWriter& writer);
void denseText(ModelWriter& writer);
void sparseText(ModelWriter& writer);
void textsOfOneClass(ModelWriter& writer);

} // namespace bench
