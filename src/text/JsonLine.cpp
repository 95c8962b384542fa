#include "text/JsonLine.h"

#include "text/escape.h"

#include <utility>

namespace text {

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
    line_ += quotedJsonText(value);
}

void JsonLine::number(std::string_view name, std::uint64_t value) {
    key(name);
    line_ += std::to_string(value);
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
