#include "text/JsonLine.h"

#include "text/escape.h"

#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace text {

void appendNumber(std::string& to, std::uint64_t value) {
    std::array<char, std::numeric_limits<std::uint64_t>::digits10 + 1> digits;
    to.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

void JsonLine::key(std::string_view name) {
    if (line_.back() != '{') {
        line_ += ',';
    }
    line_ += '"';
    line_ += name;
    line_ += "\":";
}

void JsonLine::text(std::string_view name, std::string_view value) {
    key(name);
    appendQuotedJson(line_, value);
}

void JsonLine::number(std::string_view name, std::uint64_t value) {
    key(name);
    appendNumber(line_, value);
}

void JsonLine::truth(std::string_view name, bool value) {
    key(name);
    line_ += value ? "true" : "false";
}

void JsonLine::startObject(std::string_view name) {
    key(name);
    line_ += '{';
}

void JsonLine::endObject() {
    line_ += '}';
}

std::string JsonLine::finish() {
    line_ += "}\n";
    return std::move(line_);
}

} // namespace text
