#pragma once

#include "model/PetalText.h"

#include <span>
#include <string_view>

namespace bench {

struct ModelWriter;

/// A form of model.
struct Shape {
    std::string_view name;
    std::string_view description;
    std::string_view things; ///< what it has much of, and is counted by
    Layout layout;
    double settings; ///< the share of the text that other tools' settings are, behind what is modelled
    void (*write)(ModelWriter& writer); ///< writes what is in the logical view, as much as is wanted
};

/// All shapes; the first is the ordinary one.
std::span<const Shape> shapes() noexcept;

/// The shape of that name; null when there is none.
const Shape* findShape(std::string_view name) noexcept;

} // namespace bench
