#pragma once

class KelObject;
class KelTraversalOperation;

/// What a traversal starts with.
enum class KelVisit { objectAndParts, partsOnly };

/// Visits what an object owns, directly or not, depth first in the order of the relation table and of each
/// collection, and each object once. Takes heap, not stack, for the depth of the model.
void visitDepthFirst(KelObject& root, KelTraversalOperation& operation, void* userData, KelVisit visit);
