#pragma once

#include "text/BufferedOutput.h"

#include <rapidjson/writer.h>

#include <cstdint>
#include <string_view>

namespace text {

/// A buffered output in the shape that `rapidjson::Writer` writes to.
struct JsonStream {
    using Ch = char;

    void Put(char byte) { output.put(byte); }
    void Flush() {} // the buffer's owner decides

    BufferedOutput& output;
};

/// Writes JSON with every member and every list element on a line of its own. The indentation stops growing at 40
/// spaces, so that the size of a document grows in step with its contents however deep they nest. A level costs a
/// few bytes of heap and no stack. Callers open and close in pairs and write a key before each value of an object.
class IndentedJson : private rapidjson::Writer<JsonStream> {
public:
    explicit IndentedJson(BufferedOutput& output) : stream_{output} { Reset(stream_); }

    void startObject();
    void endObject();
    void startList();
    void endList();
    void key(std::string_view member); // letters and digits
    /// Any bytes, as a value or in place of a key, as `quotedJsonText` writes them. Throws `std::length_error` above
    /// 4 GiB.
    void text(std::string_view value);
    void number(std::int64_t value);
    void trueFlag();

private:
    void startValue();
    void endLevel();
    void startLine();

    JsonStream stream_;
};

} // namespace text
