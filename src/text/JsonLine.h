#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace text {

/// A JSON object on a line of its own. Texts become what `quotedJsonText` makes of them; names need no escapes.
class JsonLine {
public:
    void text(std::string_view name, std::string_view value);
    void number(std::string_view name, std::uint64_t value);
    void truth(std::string_view name, bool value);
    /// Starts an object within the object: what follows is in it until `endObject`.
    void startObject(std::string_view name);
    void endObject();

    /// The line, its end included. Called once, when every object within has ended.
    [[nodiscard]] std::string finish();

private:
    void key(std::string_view name);

    std::string line_ = "{";
};

} // namespace text
