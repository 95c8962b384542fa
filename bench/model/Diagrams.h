#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

struct ModelWriter;

/// A class diagram that the caller fills with views and ends.
void beginDiagram(ModelWriter& writer, std::string_view name);
void endDiagram(ModelWriter& writer);

/// Draws a class. Returns the number of its view.
std::uint64_t classView(ModelWriter& writer, std::string_view name);

/// Draws a note and ties it to what has that view.
void noteOn(ModelWriter& writer, std::uint64_t view);

/// Where a line on a diagram begins and ends.
void attachments(ModelWriter& writer);

} // namespace bench
