#pragma once

#include "diff/Model.h"
#include "text/JsonTaker.h"
#include "text/Output.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace diff {

/// Writes a model's JSON document in a form that goes from one process to another: the same parts in the same order,
/// but with a byte for the name of a member, no blanks, no escapes, and quids in lower case.
///
/// The output must outlive it. Throws what that throws.
class DocumentPacker final : public text::JsonTaker {
public:
    explicit DocumentPacker(text::Output& output) : output_(output) {}

    void startObject() override;
    void endObject() override;
    void startList() override;
    void endList() override;
    void key(std::string_view member) override;
    void text(std::string_view value) override;
    void number(std::int64_t value) override;
    void truth(bool value) override;
    /// Called once, after the last part.
    void finish() { output_.flush(); }

private:
    void putSize(std::uint64_t size);
    void putText(std::string_view text);

    text::BufferedOutput output_;
    std::vector<std::string> keys_;         // in the order of their first use
    std::array<std::uint8_t, 64> likely_{}; // indexes into them by what tells most names from each other
    bool isQuid_ = false;                   // the last key was
};

/// Reads what a `DocumentPacker` has written, or the beginning of it; the model owns `bytes`. Otherwise like
/// `readModel`.
[[nodiscard]] Model readPacked(std::shared_ptr<const char> bytes, std::size_t size);

} // namespace diff
