#pragma once

#include "text/JsonTaker.h"
#include "text/Output.h"

#include <rapidjson/writer.h>

#include <cstdint>
#include <string_view>

namespace text {

/// Adapts a buffered output to `rapidjson::Writer`.
struct JsonStream {
    using Ch = char;

    void Put(char byte) { output.put(byte); }
    void Flush() {} // left to the owner of the buffer

    BufferedOutput& output;
};

/// Writes JSON with every member and every list element on a separate line.
///
/// The output must outlive it and is flushed by the caller. Callers close what they open, in order, and write a key
/// before each value of an object. Throws what the output throws. The indentation stops growing at 40 spaces, so that
/// the size of a document is proportional to its contents at any depth; a level takes a few bytes of heap and no stack.
class IndentedJson final : public JsonTaker, private rapidjson::Writer<JsonStream> {
public:
    explicit IndentedJson(BufferedOutput& output) : stream_{output} { Reset(stream_); }

    void startObject() override;
    void endObject() override;
    void startList() override;
    void endList() override;
    void key(std::string_view member) override;
    /// Any bytes, as a value or instead of a key, written as by `quotedJsonText`. Throws `std::length_error` for more
    /// than 4 GiB.
    void text(std::string_view value) override;
    void number(std::int64_t value) override;
    void truth(bool value) override;
    void null();

private:
    void startValue();
    void endLevel();
    void startLine();

    JsonStream stream_;
};

} // namespace text
