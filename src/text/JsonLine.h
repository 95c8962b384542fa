#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace text {

/// Appends the decimal digits of a number.
void appendNumber(std::string& to, std::uint64_t value);

/// Builds a JSON object on a single line, in memory. Texts may be any bytes (see `quotedJsonText`); names must be
/// letters and digits.
class JsonLine {
public:
    JsonLine() { line_.reserve(usualLength); }

    void text(std::string_view name, std::string_view value);
    void number(std::string_view name, std::uint64_t value);
    void truth(std::string_view name, bool value);
    /// Starts a nested object, which takes all members until `endObject`.
    void startObject(std::string_view name);
    void endObject();

    /// The line with its line end. Called once, after every nested object has been ended.
    [[nodiscard]] std::string finish();

private:
    static constexpr std::size_t usualLength = 300;

    void key(std::string_view name);

    std::string line_ = "{";
};

} // namespace text
