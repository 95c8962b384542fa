#pragma once

#include "diff/Model.h"
#include "layout/NotationTree.h"
#include "petal/Request.h"

#include <array>
#include <memory>
#include <string>

namespace petal {

/// One of the two models of a comparison.
struct Side {
    std::string path; ///< what to read: a model file, a JSON document, "-" or, without a model, "/dev/null"
    std::string name; ///< what to call it
};

/// A side that has been read.
struct ReadSide {
    diff::Model model;
    bool isModelFile = false;                       ///< not a JSON document
    std::unique_ptr<layout::NotationTree> drawings; ///< of a model file, if the request is for its layout; else null
};

/// Reads both sides. Model files are imported in child processes, at the same time. Reports missing units on standard
/// error unless the request is quiet. Throws a `Failure`.
[[nodiscard]] std::array<ReadSide, 2> readSides(const std::array<Side, 2>& sides, const DiffRequest& request);

} // namespace petal
