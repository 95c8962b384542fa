#pragma once

#include "diff/Model.h"
#include "host/text/KelTextHash.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

namespace diff {

/// The meaning of a member's name.
struct Member {
    enum class Use : std::uint8_t { id, name, quid, file, line, kind, tool, field, elements } use = Use::field;
    FieldId field{};          ///< for lists: of numbers or texts
    Kind child = Kind::model; ///< for lists: of objects; the model for those that have a kind themselves
    bool hasField = true;
};

/// Null for a name that no member has.
[[nodiscard]] const Member* findMember(std::string_view name);

/// Puts a model together from the parts of its JSON document, which it is given in their order.
///
/// Its functions of parts are those that a parser of RapidJSON calls; false means that the document is refused. Texts
/// and names of members are parts of the bytes that it was made with. Used by one thread.
class ModelReader {
public:
    /// The model will own `bytes`, in which it has `size` bytes. With `areQuidsLower` they are in lower case, and the
    /// bytes stay as they are.
    ModelReader(std::shared_ptr<const char> bytes, std::size_t size, bool areQuidsLower);

    bool Null() { return isSkipped() || takeValue(); } // as if left out
    bool Bool(bool value);
    bool Int(int value) { return takeNumber(value); }
    bool Uint(unsigned value) { return takeNumber(value); }
    bool Int64(std::int64_t value) { return takeNumber(value); }
    bool Uint64(std::uint64_t /*value*/) { return isSkipped() || refuse("a number is out of range"); }
    bool Double(double /*value*/) { return isSkipped() || refuse("a number is not whole"); }
    bool RawNumber(const char* /*text*/, unsigned /*length*/, bool /*copy*/) { return false; } // not asked for
    bool String(const char* text, unsigned length, bool /*copy*/) { return takeText({text, length}); }
    bool takeText(std::string_view text);
    bool Key(const char* text, unsigned length, bool /*copy*/) {
        const std::string_view name(text, length);
        return isSkipped() || takeKey(name, isIn(Level::document) ? nullptr : findMember(name));
    }
    /// The same for a name whose member, if there is one, is known.
    bool takeKey(std::string_view name, const Member* member);
    bool StartObject();
    bool EndObject(unsigned /*count*/ = 0);
    bool StartArray();
    bool EndArray(unsigned /*count*/ = 0);

    /// Whether all that has begun has ended.
    [[nodiscard]] bool isComplete() const { return levels_.empty(); }
    /// Why a part was refused; empty for none.
    [[nodiscard]] const std::string& getFault() const { return fault_; }
    /// The model, after the last part. Called once. Throws `BadDocument`.
    [[nodiscard]] Model finish();

private:
    struct Level {
        enum Kind : std::uint8_t { document, element, list, record, tool } kind;
        const Member* member = nullptr; // of a list
        ElementId id = noElement;       // of an element
        std::uint64_t first = 0;        // of a list, in its pool
        std::uint32_t size = 0;         // of a list of values, not of elements
        std::size_t pending = 0;        // of an element or a record: where its fields start
        bool hasKind = false;
    };

    [[nodiscard]] bool isSkipped() const { return skipped_ > 0; }
    [[nodiscard]] bool isIn(enum Level::Kind kind) const { return !levels_.empty() && levels_.back().kind == kind; }
    bool refuse(std::string fault);
    bool takeValue() { return !levels_.empty() || refuse("it is no JSON object"); }
    bool startElement(Kind kind);
    bool endElement(const Level& level);
    bool startRecord();
    bool keepFields(const Level& level, std::uint32_t& first, std::uint32_t& count);
    [[nodiscard]] std::uint64_t poolSize(ValueForm form) const;
    bool addField(ValueForm form, std::uint64_t value, bool isSet);
    bool takeNumber(std::int64_t value);
    [[nodiscard]] bool isId(std::int64_t value) const;
    bool takeId(std::int64_t value);
    bool takeTextOf(Element& element, std::string_view text);
    bool addTextField(std::string_view text);
    bool addText(FieldId field, std::string_view text);
    [[nodiscard]] std::string_view lowered(std::string_view text) const;
    std::uint32_t fileNumber(std::string_view path);
    [[nodiscard]] ElementId placeOf(std::size_t id) const;

    Model model_;
    std::size_t size_; // of the bytes
    std::vector<Level> levels_;
    std::vector<Field> pending_;    // of the elements and records that are open
    std::vector<ElementId> places_; // of elements, by the document's ids
    tsl::robin_map<std::string_view, std::uint32_t, KelTextHash> fileNumbers_;
    std::uint32_t lastFile_ = 0;
    std::string_view key_;           // of the document's last member
    const Member* member_ = nullptr; // of the last one in an element or record
    std::size_t skipped_ = 0;        // how many levels deep in what is left out
    bool isModel_ = false;
    bool areQuidsLower_;
    std::string fault_;
};

} // namespace diff
