#include "diff/Model.h"
#include "host/text/KelTextHash.h"
#include "text/ascii.h"
#include "text/escape.h"
#include "text/utf8.h"

// A third of a document is blanks, which SSE2 skips. Other files use the same templates without it, so these have a
// namespace of their own.
#ifdef __SSE2__
#define RAPIDJSON_SSE2
#define RAPIDJSON_NAMESPACE rapidjsonBySse2
#define RAPIDJSON_NAMESPACE_BEGIN namespace rapidjsonBySse2 {
#define RAPIDJSON_NAMESPACE_END }
#endif
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <tsl/robin_map.h>

#ifdef __SSE2__
namespace rapidjson = rapidjsonBySse2;
#endif

namespace diff {

namespace {

/// The meaning of a member's name.
struct Member {
    enum class Use : std::uint8_t { id, name, quid, file, line, kind, tool, field, elements } use = Use::field;
    FieldId field{};          ///< for lists: of numbers or texts
    Kind child = Kind::model; ///< for lists: of objects; the model for those that have a kind themselves
    bool hasField = true;
};

using Members = tsl::robin_map<std::string_view, Member, KelTextHash>;

/// Members that are no fields, or not in all places.
struct MemberRow {
    std::string_view name;
    Member member;
};
using Use = Member::Use;
constexpr std::array memberRows{
    MemberRow{"id", {.use = Use::id}},
    MemberRow{"name", {.use = Use::name}},
    MemberRow{"quid", {.use = Use::quid}},
    MemberRow{"file", {.use = Use::file}},
    MemberRow{"line", {.use = Use::line}},
    MemberRow{"kind", {.use = Use::kind}},
    MemberRow{"tool", {.use = Use::tool}},
    MemberRow{"types", {.use = Use::elements, .child = Kind::type, .hasField = false}},
    MemberRow{"packages", {.use = Use::elements, .child = Kind::package, .hasField = false}},
    MemberRow{"elements", {.use = Use::elements, .field = FieldId::diagramElements}},
    MemberRow{"diagrams", {.use = Use::elements, .child = Kind::diagram, .hasField = false}},
    MemberRow{"attributes", {.use = Use::elements, .field = FieldId::keyAttributes, .child = Kind::attribute}},
    MemberRow{"operations", {.use = Use::elements, .child = Kind::operation, .hasField = false}},
    MemberRow{"arguments", {.use = Use::elements, .child = Kind::argument, .hasField = false}},
    MemberRow{"keys", {.use = Use::elements, .child = Kind::key, .hasField = false}},
    MemberRow{"roles", {.use = Use::elements, .child = Kind::role, .hasField = false}},
};

const Members& members() {
    static const Members all = [] {
        Members made;
        for (const MemberRow& row : memberRows) {
            made.emplace(row.name, row.member);
        }
        for (std::size_t index = 0; index < fieldCount; ++index) {
            const auto field = static_cast<FieldId>(index);
            made.emplace(memberName(field), Member{.field = field}); // unless there is a row
        }
        return made;
    }();
    return all;
}

/// The kind of an element in a list of several kinds; the model for an unknown word.
Kind elementKindOf(std::string_view word) {
    for (const Kind kind :
         {Kind::classObject, Kind::association, Kind::generalization, Kind::realization, Kind::dependency}) {
        if (kindWord(kind) == word) {
            return kind;
        }
    }
    return Kind::model;
}

} // namespace

/// Takes the events of the parser, one after the other, and puts the model together.
class ModelReader {
public:
    static Model read(std::string document) {
        ModelReader reader;
        constexpr std::size_t piece = 16; // of the text, which SSE2 reads at a time, also at its end
        document.reserve(document.size() + piece);
        *reader.model_.text_ = std::move(document);
        reader.model_.elements_.clear();
        rapidjson::Reader parser;
        rapidjson::InsituStringStream stream(reader.model_.text_->data());
        const rapidjson::ParseResult result =
            parser.Parse<rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag>(stream, reader);
        if (result.IsError()) {
            const std::string where = " (at byte " + std::to_string(result.Offset()) + ")";
            throw BadDocument((reader.fault_.empty()
                                   ? "it is not JSON: " + std::string(rapidjson::GetParseError_En(result.Code()))
                                   : reader.fault_) +
                              where);
        }
        reader.finish();
        return std::move(reader.model_);
    }

    // What the parser calls; false ends it.

    bool Null() { return isSkipped() || takeValue(); } // as if left out
    bool Bool(bool value) {
        return isSkipped() || (isIn(Level::document) ? takeValue() : addField(ValueForm::flag, value ? 1 : 0, value));
    }
    bool Int(int value) { return takeNumber(value); }
    bool Uint(unsigned value) { return takeNumber(value); }
    bool Int64(std::int64_t value) { return takeNumber(value); }
    bool Uint64(std::uint64_t /*value*/) { return isSkipped() || refuse("a number is out of range"); }
    bool Double(double /*value*/) { return isSkipped() || refuse("a number is not whole"); }
    bool RawNumber(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) {
        return false;
    } // not asked for

    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return isSkipped() || takeText({text, length});
    }

    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (isSkipped()) {
            return true;
        }
        const std::string_view name(text, length);
        if (isIn(Level::document)) {
            key_ = name;
            return true;
        }
        const auto found = members().find(name);
        if (found == members().end()) {
            return refuse("petal writes no member '" + text::printableText(name) + "'");
        }
        member_ = &found->second;
        return true;
    }

    bool StartObject() {
        if (isSkipped()) {
            ++skipped_;
            return true;
        }
        if (levels_.empty()) {
            levels_.push_back({.kind = Level::document});
            return true;
        }
        switch (levels_.back().kind) {
        case Level::document:
            return key_ == "model" && model_.elements_.empty() ? startElement(Kind::model)
                                                               : refuse("an object is misplaced");
        case Level::list:
            if (formOf(levels_.back().member->field) == ValueForm::records &&
                levels_.back().member->use == Use::field) {
                return startRecord();
            }
            return levels_.back().member->use == Use::elements ? startElement(levels_.back().member->child)
                                                               : refuse("an object is misplaced");
        case Level::record:
            if (member_->use == Use::tool) {
                levels_.push_back({.kind = Level::tool});
                return true;
            }
            return refuse("an object is misplaced");
        default:
            return refuse("an object is misplaced");
        }
    }

    bool EndObject(rapidjson::SizeType /*count*/) {
        if (isSkipped()) {
            --skipped_;
            return true;
        }
        const Level level = levels_.back();
        levels_.pop_back();
        if (level.kind == Level::element) {
            return endElement(level);
        }
        if (level.kind == Level::record) {
            Record record;
            return keepFields(level, record.firstField, record.fieldCount) && (model_.records_.push_back(record), true);
        }
        return true;
    }

    bool StartArray() {
        if (isSkipped()) {
            ++skipped_;
            return true;
        }
        const bool isInOne = isIn(Level::element) && (member_->use == Use::elements || member_->use == Use::field);
        if (!isInOne) {
            return refuse("a list is misplaced");
        }
        levels_.push_back({.kind = Level::list, .member = member_, .first = 0});
        if (member_->hasField) {
            levels_.back().first = poolSize(formOf(member_->field));
        }
        return true;
    }

    bool EndArray(rapidjson::SizeType /*count*/) {
        if (isSkipped()) {
            --skipped_;
            return true;
        }
        const Level list = levels_.back();
        levels_.pop_back();
        if (list.member->hasField) {
            if (list.size > 0) {
                pending_.push_back({list.member->field, list.size, list.first});
            }
        }
        return true;
    }

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
    bool refuse(std::string fault) {
        fault_ = std::move(fault);
        return false;
    }
    bool takeValue() { return !levels_.empty() || refuse("it is no JSON object"); }

    bool startElement(Kind kind) {
        const ElementId owner = levels_.size() < 2 ? noElement : levels_[levels_.size() - 2].id;
        const auto id = static_cast<ElementId>(model_.elements_.size());
        Element& element = model_.elements_.emplace_back();
        element.kind = kind;
        element.owner = owner;
        const bool isMixed = kind == Kind::model && id != 0; // the list has several kinds
        levels_.push_back({.kind = Level::element, .id = id, .pending = pending_.size(), .hasKind = !isMixed});
        return true;
    }

    bool endElement(const Level& level) {
        Element& element = model_.elements_[level.id];
        element.end = static_cast<ElementId>(model_.elements_.size());
        if (!level.hasKind) {
            return refuse("an element has no kind");
        }
        return keepFields(level, element.firstField, element.fieldCount);
    }

    bool startRecord() {
        ++levels_.back().size;
        levels_.push_back({.kind = Level::record, .pending = pending_.size()});
        return true;
    }

    bool keepFields(const Level& level, std::uint32_t& first, std::uint32_t& count) {
        const auto begin = pending_.begin() + static_cast<std::ptrdiff_t>(level.pending);
        std::sort(begin, pending_.end(), [](const Field& one, const Field& other) { return one.id < other.id; });
        const auto twice = std::adjacent_find(begin, pending_.end(),
                                              [](const Field& one, const Field& other) { return one.id == other.id; });
        if (twice != pending_.end()) {
            return refuse("a member stands twice: '" + std::string(memberName(twice->id)) + "'");
        }
        first = static_cast<std::uint32_t>(model_.fields_.size());
        count = static_cast<std::uint32_t>(pending_.end() - begin);
        model_.fields_.insert(model_.fields_.end(), begin, pending_.end());
        pending_.resize(level.pending);
        return true;
    }

    [[nodiscard]] std::uint64_t poolSize(ValueForm form) const {
        return form == ValueForm::references ? model_.references_.size()
               : form == ValueForm::texts    ? model_.texts_.size()
                                             : model_.records_.size();
    }

    bool addField(ValueForm form, std::uint64_t value, bool isSet) {
        const bool isField =
            !levels_.empty() && !isIn(Level::list) && member_->use == Use::field && formOf(member_->field) == form;
        if (!isField) {
            return refuse("a member has a value of another form than petal writes");
        }
        if (isSet) {
            pending_.push_back({member_->field, 0, value});
        }
        return true;
    }

    bool takeNumber(std::int64_t value) {
        if (isSkipped()) {
            return true;
        }
        if (levels_.empty()) {
            return refuse("it is no JSON object");
        }
        if (isIn(Level::document)) {
            return key_ != "formatVersion" || value == 1 ||
                   refuse("its formatVersion is " + std::to_string(value) + ", and this petal reads 1");
        }
        if (isIn(Level::list)) {
            const Member& list = *levels_.back().member;
            if (!list.hasField || formOf(list.field) != ValueForm::references || !isId(value)) {
                return refuse("a number is misplaced");
            }
            model_.references_.push_back(static_cast<ElementId>(value));
            ++levels_.back().size;
            return true;
        }
        switch (member_->use) {
        case Use::id:
            return isIn(Level::element) ? takeId(value) : refuse("an id is misplaced");
        case Use::line:
            if (isIn(Level::element)) {
                model_.elements_[levels_.back().id].line = static_cast<std::uint32_t>(value);
                return true;
            }
            return refuse("a line is misplaced");
        default:
            if (member_->use == Use::field && formOf(member_->field) == ValueForm::reference) {
                return isId(value) ? addField(ValueForm::reference, static_cast<std::uint64_t>(value), true)
                                   : refuse("an id is out of range");
            }
            return addField(ValueForm::number, static_cast<std::uint64_t>(value), value != 0);
        }
    }

    // Ids count the elements, each of which takes more than a byte of the document.
    [[nodiscard]] bool isId(std::int64_t value) const {
        return value > 0 && static_cast<std::uint64_t>(value) <= model_.text_->size();
    }

    bool takeId(std::int64_t value) {
        if (!isId(value)) {
            return refuse("an id is out of range");
        }
        const auto id = static_cast<std::size_t>(value);
        if (places_.size() <= id) {
            places_.resize(std::max(id + 1, places_.size() * 2), noElement);
        }
        const Level level = levels_.back();
        if (places_[id] == noElement) {
            places_[id] = level.id;
            return true;
        }
        // The document has an element that two others own (an argument may be one) twice. Its first owner has it here.
        if (level.id + 1 != model_.elements_.size() || pending_.size() != level.pending || level.id == 0) {
            return refuse("an id stands twice: " + std::to_string(value));
        }
        model_.elements_.pop_back();
        levels_.pop_back();
        skipped_ = 1;
        return true;
    }

    bool takeText(std::string_view text) {
        if (levels_.empty()) {
            return refuse("it is no JSON object");
        }
        if (isIn(Level::document)) {
            if (key_ == "format") {
                isModel_ = text == "petal-model";
            }
            return key_ != "format" || isModel_ ||
                   refuse("its format is '" + text::printableText(text) + "', and only a petal-model can be compared");
        }
        if (isIn(Level::list)) {
            const Member& list = *levels_.back().member;
            if (list.use != Use::field || formOf(list.field) != ValueForm::texts) {
                return refuse("a text is misplaced");
            }
            model_.texts_.push_back(text);
            ++levels_.back().size;
            return true;
        }
        return isIn(Level::element)        ? takeTextOf(model_.elements_[levels_.back().id], text)
               : member_->use == Use::name ? addText(isIn(Level::tool) ? FieldId::toolName : FieldId::recordName, text)
                                           : addTextField(text);
    }

    bool takeTextOf(Element& element, std::string_view text) {
        switch (member_->use) {
        case Use::name:
            element.name = text;
            return true;
        case Use::quid:
            element.quid = lowered(text);
            return true;
        case Use::file:
            element.file = fileNumber(text);
            return true;
        case Use::kind:
            if (element.kind == Kind::key || element.kind == Kind::type) {
                return addText(element.kind == Kind::key ? FieldId::keyKind : FieldId::typeKind, text);
            }
            element.kind = elementKindOf(text);
            levels_.back().hasKind = element.kind != Kind::model;
            return levels_.back().hasKind || refuse("'" + text::printableText(text) + "' is no kind of element");
        default:
            return addTextField(text);
        }
    }

    bool addTextField(std::string_view text) {
        return member_->use == Use::field && formOf(member_->field) == ValueForm::text
                   ? addText(member_->field, text)
                   : refuse("a member has a value of another form than petal writes");
    }
    bool addText(FieldId field, std::string_view text) {
        if (!text.empty()) {
            pending_.push_back({field, static_cast<std::uint32_t>(text.size()),
                                static_cast<std::uint64_t>(text.data() - model_.text_->data())});
        }
        return true;
    }

    /// In place: the document is the model's own.
    std::string_view lowered(std::string_view text) {
        const std::string lower = text::lowerCase(text);
        std::ranges::copy(lower, model_.text_->data() + (text.data() - model_.text_->data()));
        return text;
    }

    std::uint32_t fileNumber(std::string_view path) {
        if (path != model_.files_[lastFile_] || lastFile_ == 0) {
            const auto [found, isNew] =
                fileNumbers_.try_emplace(path, static_cast<std::uint32_t>(model_.files_.size()));
            if (isNew) {
                model_.files_.emplace_back(path);
            }
            lastFile_ = found->second;
        }
        return lastFile_;
    }

    void finish() {
        if (!isModel_ || model_.elements_.empty()) {
            throw BadDocument("it holds no model");
        }
        for (Field& field : model_.fields_) {
            if (formOf(field.id) == ValueForm::reference) {
                field.value = placeOf(static_cast<std::size_t>(field.value));
            }
        }
        for (ElementId& reference : model_.references_) {
            reference = placeOf(reference);
        }
        model_.elements_.shrink_to_fit();
        model_.fields_.shrink_to_fit();
    }

    [[nodiscard]] ElementId placeOf(std::size_t id) const {
        if (id >= places_.size() || places_[id] == noElement) {
            throw BadDocument("it refers to an element " + std::to_string(id) + " that it does not hold");
        }
        return places_[id];
    }

    Model model_;
    std::vector<Level> levels_;
    std::vector<Field> pending_;    // of the elements and records that are open
    std::vector<ElementId> places_; // of elements, by the document's ids
    tsl::robin_map<std::string_view, std::uint32_t, KelTextHash> fileNumbers_;
    std::uint32_t lastFile_ = 0;
    std::string_view key_;           // of the document's last member
    const Member* member_ = nullptr; // of the last one in an element or record
    std::size_t skipped_ = 0;        // how many levels deep in what is left out
    bool isModel_ = false;
    std::string fault_;
};

Model readModel(std::string document, Trust trust) {
    if (trust == Trust::none && !text::isValidUtf8(document)) {
        throw BadDocument("it is not UTF-8");
    }
    return ModelReader::read(std::move(document));
}

} // namespace diff
