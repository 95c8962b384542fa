#include "diff/ModelReader.h"

#include "host/text/KelTextHash.h"
#include "text/ascii.h"
#include "text/escape.h"

#include <algorithm>
#include <tsl/robin_map.h>

namespace diff {

namespace {

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

const Member* findMember(std::string_view name) {
    const auto found = members().find(name);
    return found != members().end() ? &found->second : nullptr;
}

ModelReader::ModelReader(std::shared_ptr<const char> bytes, std::size_t size, bool areQuidsLower)
    : size_(size), areQuidsLower_(areQuidsLower) {
    member_ = findMember("id"); // for a value without a name, as only a damaged document has one
    // Most elements take more bytes of a document than this, and pages that stay empty cost nothing.
    constexpr std::size_t leastBytes = 32;
    model_.text_ = std::move(bytes);
    model_.elements_.clear();
    model_.elements_.reserve(size / leastBytes);
    model_.fields_.reserve(size / leastBytes * 2);
    places_.reserve(size / leastBytes);
}

bool ModelReader::takeKey(std::string_view name, const Member* member) {
    if (isSkipped()) {
        return true;
    }
    if (isIn(Level::document)) {
        key_ = name;
        return true;
    }
    member_ = member;
    return member != nullptr || refuse("petal writes no member '" + text::printableText(name) + "'");
}

bool ModelReader::Bool(bool value) {
    return isSkipped() || (isIn(Level::document) ? takeValue() : addField(ValueForm::flag, value ? 1 : 0, value));
}
bool ModelReader::StartObject() {
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
        if (formOf(levels_.back().member->field) == ValueForm::records && levels_.back().member->use == Use::field) {
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

bool ModelReader::EndObject(unsigned /*count*/) {
    if (isSkipped()) {
        --skipped_;
        return true;
    }
    if (levels_.empty() || isIn(Level::list)) {
        return refuse("the end of an object is misplaced");
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

bool ModelReader::StartArray() {
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

bool ModelReader::EndArray(unsigned /*count*/) {
    if (isSkipped()) {
        --skipped_;
        return true;
    }
    if (!isIn(Level::list)) {
        return refuse("the end of a list is misplaced");
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

bool ModelReader::refuse(std::string fault) {
    fault_ = std::move(fault);
    return false;
}

bool ModelReader::startElement(Kind kind) {
    const ElementId owner = levels_.size() < 2 ? noElement : levels_[levels_.size() - 2].id;
    const auto id = static_cast<ElementId>(model_.elements_.size());
    Element& element = model_.elements_.emplace_back();
    element.kind = kind;
    element.owner = owner;
    const bool isMixed = kind == Kind::model && id != 0; // the list has several kinds
    levels_.push_back({.kind = Level::element, .id = id, .pending = pending_.size(), .hasKind = !isMixed});
    return true;
}

bool ModelReader::endElement(const Level& level) {
    Element& element = model_.elements_[level.id];
    element.end = static_cast<ElementId>(model_.elements_.size());
    if (!level.hasKind) {
        return refuse("an element has no kind");
    }
    return keepFields(level, element.firstField, element.fieldCount);
}

bool ModelReader::startRecord() {
    ++levels_.back().size;
    levels_.push_back({.kind = Level::record, .pending = pending_.size()});
    return true;
}

bool ModelReader::keepFields(const Level& level, std::uint32_t& first, std::uint32_t& count) {
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

std::uint64_t ModelReader::poolSize(ValueForm form) const {
    return form == ValueForm::references ? model_.references_.size()
           : form == ValueForm::texts    ? model_.texts_.size()
                                         : model_.records_.size();
}

bool ModelReader::addField(ValueForm form, std::uint64_t value, bool isSet) {
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

bool ModelReader::takeNumber(std::int64_t value) {
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
bool ModelReader::isId(std::int64_t value) const {
    return value > 0 && static_cast<std::uint64_t>(value) <= size_;
}

bool ModelReader::takeId(std::int64_t value) {
    if (!isId(value)) {
        return refuse("an id is out of range");
    }
    const auto id = static_cast<std::size_t>(value);
    if (places_.size() <= id) {
        places_.resize(id + 1, noElement);
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

bool ModelReader::takeText(std::string_view text) {
    if (isSkipped()) {
        return true;
    }
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

bool ModelReader::takeTextOf(Element& element, std::string_view text) {
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

bool ModelReader::addTextField(std::string_view text) {
    return member_->use == Use::field && formOf(member_->field) == ValueForm::text
               ? addText(member_->field, text)
               : refuse("a member has a value of another form than petal writes");
}
bool ModelReader::addText(FieldId field, std::string_view text) {
    if (!text.empty()) {
        pending_.push_back({field, static_cast<std::uint32_t>(text.size()),
                            static_cast<std::uint64_t>(text.data() - model_.text_.get())});
    }
    return true;
}

/// In place, where it is not: the bytes are the model's own.
std::string_view ModelReader::lowered(std::string_view text) const {
    if (!areQuidsLower_) {
        char* const bytes = const_cast<char*>(text.data());
        std::transform(bytes, bytes + text.size(), bytes, text::lower);
    }
    return text;
}

std::uint32_t ModelReader::fileNumber(std::string_view path) {
    if (path != model_.files_[lastFile_] || lastFile_ == 0) {
        const auto [found, isNew] = fileNumbers_.try_emplace(path, static_cast<std::uint32_t>(model_.files_.size()));
        if (isNew) {
            model_.files_.emplace_back(path);
        }
        lastFile_ = found->second;
    }
    return lastFile_;
}

ElementId ModelReader::placeOf(std::size_t id) const {
    if (id >= places_.size() || places_[id] == noElement) {
        throw BadDocument("it refers to an element " + std::to_string(id) + " that it does not hold");
    }
    return places_[id];
}

Model ModelReader::finish() {
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
    return std::move(model_);
}

} // namespace diff
