#include "text/IndentedJson.h"

#include "text/escape.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>

namespace text {

namespace {

constexpr std::size_t spacesPerLevel = 2;
constexpr std::size_t mostSpaces = 40;

} // namespace

void IndentedJson::startObject() {
    startValue();
    new (level_stack_.Push<Level>()) Level(false);
    WriteStartObject();
}

void IndentedJson::endObject() {
    endLevel();
    WriteEndObject();
}

void IndentedJson::startList() {
    startValue();
    new (level_stack_.Push<Level>()) Level(true);
    WriteStartArray();
}

void IndentedJson::endList() {
    endLevel();
    WriteEndArray();
}

void IndentedJson::key(std::string_view member) {
    startValue();
    stream_.output.put('"');
    stream_.output.put(member);
    stream_.output.put('"');
}

void IndentedJson::text(std::string_view value) {
    if (!isSafeJsonText(value)) {
        const std::string quoted = quotedJsonText(value);
        startValue();
        stream_.output.put(quoted);
        return;
    }
    if (value.size() > std::numeric_limits<rapidjson::SizeType>::max()) {
        throw std::length_error("a text is too long for JSON");
    }
    startValue();
    WriteString(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void IndentedJson::number(std::int64_t value) {
    startValue();
    WriteInt64(value);
}

void IndentedJson::truth(bool value) {
    startValue();
    WriteBool(value);
}

void IndentedJson::null() {
    startValue();
    WriteNull();
}

void IndentedJson::startValue() {
    if (level_stack_.Empty()) {
        return;
    }
    Level& level = *level_stack_.Top<Level>();
    const bool followsKey = !level.inArray && level.valueCount % 2 == 1;
    if (followsKey) {
        stream_.output.put(": ");
    } else {
        if (level.valueCount > 0) {
            stream_.output.put(',');
        }
        startLine();
    }
    ++level.valueCount;
}

void IndentedJson::endLevel() {
    const bool isEmpty = level_stack_.Pop<Level>(1)->valueCount == 0;
    if (!isEmpty) {
        startLine();
    }
}

void IndentedJson::startLine() {
    const std::size_t depth = level_stack_.GetSize() / sizeof(Level);
    stream_.output.put('\n');
    stream_.output.putRepeated(' ', std::min(depth * spacesPerLevel, mostSpaces));
}

} // namespace text
