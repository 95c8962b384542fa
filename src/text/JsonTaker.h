#pragma once

#include <cstdint>
#include <string_view>

namespace text {

/// Takes the parts of a JSON document in their order, whatever form it gives them.
///
/// Callers close what they open, in order, and give a key before each value of an object. Texts need to live during the
/// call only. Throws what the implementation throws.
class JsonTaker {
public:
    JsonTaker() = default;
    JsonTaker(const JsonTaker&) = delete;
    JsonTaker& operator=(const JsonTaker&) = delete;
    virtual ~JsonTaker() = default;

    virtual void startObject() = 0;
    virtual void endObject() = 0;
    virtual void startList() = 0;
    virtual void endList() = 0;
    virtual void key(std::string_view member) = 0; ///< letters, digits and "_"
    /// Any bytes; U+FFFD takes the place of each invalid sequence.
    virtual void text(std::string_view value) = 0;
    virtual void number(std::int64_t value) = 0;
    virtual void truth(bool value) = 0;
    void trueFlag() { truth(true); }
};

} // namespace text
