#include "html/pageData.h"

#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/Exporter.h"
#include "export/modelWalk.h"
#include "host/model/KelClass.h"
#include "host/model/KelNumbering.h"
#include "host/model/KelType.h"
#include "html/DataBlock.h"
#include "layout/makeScene.h"
#include "layout/write.h"
#include "ledger/Ledger.h"
#include "source/SourceMap.h"
#include "text/JsonLine.h"
#include "text/escape.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <tsl/robin_map.h>

namespace html {

namespace {

/// Writes JSON without blanks. Callers put the brackets and the keys, and call `flush` last.
class CompactJson {
public:
    explicit CompactJson(text::Output& output) : output_(output) {}

    void open(char bracket) {
        separate();
        text_ += bracket;
        isFirst_ = true;
    }
    void close(char bracket) {
        text_ += bracket;
        isFirst_ = false;
        if (text_.size() > usualLength) {
            flush();
        }
    }
    void key(std::string_view name) {
        text(name);
        text_ += ':';
        isFirst_ = true;
    }
    void text(std::string_view value) {
        separate();
        text::appendQuotedJson(text_, value);
    }
    void number(std::uint64_t value) {
        separate();
        text::appendNumber(text_, value);
    }
    void numbers(std::initializer_list<std::uint64_t> values) {
        open('[');
        for (const std::uint64_t value : values) {
            number(value);
        }
        close(']');
    }
    void flush() {
        if (!text_.empty()) {
            output_.write(text_);
            text_.clear();
        }
    }

private:
    static constexpr std::size_t usualLength = std::size_t{32} * 1024;

    void separate() {
        if (!isFirst_) {
            text_ += ',';
        }
        isFirst_ = false;
    }

    text::Output& output_;
    std::string text_;
    bool isFirst_ = true;
};

/// Numbers the elements as the JSON document does, and writes their ids.
class IdWriter final : private exporter::ModelVisitor {
public:
    IdWriter(const exporter::ExportContext& context, const exporter::ElementIds& ids, CompactJson& json)
        : ids_(ids), source_(context.getSource()), json_(json) {
        json_.key("ids");
        json_.open('[');
        walkModel(context.model, exporter::documentParts, *this);
        json_.number(plain_);
        json_.close(']');
    }

    [[nodiscard]] std::uint32_t numberOf(const KelObject& element) const { return numbers_.numberOf(element); }
    [[nodiscard]] const std::vector<const KelClass*>& getClasses() const { return classes_; }
    [[nodiscard]] const std::vector<const KelType*>& getTypes() const { return types_; }

private:
    void enter(const KelObject& element) override {
        if (numbers_.numberOf(element) != 0) { // an argument may have two owners
            return;
        }
        numbers_.give(element, ++count_);
        if (element.elementType == KelElementType::classObject) {
            classes_.push_back(static_cast<const KelClass*>(&element));
        } else if (element.isInstanceOf(KelElementType::type)) {
            types_.push_back(static_cast<const KelType*>(&element));
        }
        const std::string_view id = ids_.viewOf(element);
        const source::SourcePlace* place = source_ != nullptr ? source_->find(element) : nullptr;
        if (place != nullptr && id.front() == 'q' && id.size() == place->quid.size() + 1) {
            ++plain_;
            return;
        }
        json_.number(plain_);
        json_.text(id);
        plain_ = 0;
    }

    const exporter::ElementIds& ids_;
    const source::SourceMap* source_;
    CompactJson& json_;
    KelNumbering numbers_;
    std::uint32_t count_ = 0;
    std::uint64_t plain_ = 0; // ids since the last one that was written
    std::vector<const KelClass*> classes_;
    std::vector<const KelType*> types_;
};

void writeKinds(const IdWriter& elements, CompactJson& json) {
    const exporter::ClassKinds kinds;
    std::map<std::string_view, std::vector<std::uint32_t>> byWord;
    for (const KelClass* one : elements.getClasses()) {
        if (const exporter::ClassKind kind = kinds.kindOf(*one); kind != exporter::ClassKind::classObject) {
            byWord[classKindWord(kind)].push_back(elements.numberOf(*one));
        }
    }
    json.key("kinds");
    json.open('{');
    for (const auto& [word, numbers] : byWord) {
        json.key(word);
        json.open('[');
        for (const std::uint32_t number : numbers) {
            json.number(number);
        }
        json.close(']');
    }
    json.close('}');
}

void writeMeanings(const exporter::ClassNames& names, const IdWriter& elements, CompactJson& json) {
    json.key("means");
    json.open('[');
    for (const KelType* type : elements.getTypes()) {
        if (const KelClass* meant = names.find(type)) {
            json.numbers({elements.numberOf(*type), elements.numberOf(*meant)});
        }
    }
    json.close(']');
}

void writeFiles(const source::SourceMap* source, CompactJson& json) {
    json.key("files");
    json.open('[');
    for (std::size_t index = 0; source != nullptr && index < source->getFiles().size(); ++index) {
        const std::string& path = source->getFiles()[index];
        json.text(index == 0 ? std::filesystem::path(path).filename().string() : path);
    }
    json.close(']');
}

void writeCounts(const char* name, const ledger::Counts& counts, CompactJson& json) {
    json.key(name);
    json.numbers({counts.byOutcome[0], counts.byOutcome[1], counts.byOutcome[2]});
}

/// Numbers reasons by their texts.
class Reasons {
public:
    std::uint64_t numberOf(const ledger::Reason& reason) {
        const auto [known, isFirst] = known_.try_emplace(&reason);
        if (isFirst) {
            const auto [found, isNew] = numbers_.try_emplace(reason.text, order_.size());
            if (isNew) {
                order_.emplace_back(reason.text);
            }
            known.value() = found->second;
        }
        return known->second;
    }
    void write(CompactJson& json) const {
        json.key("reasons");
        json.open('[');
        for (const std::string_view reason : order_) {
            json.text(reason);
        }
        json.close(']');
    }

private:
    tsl::robin_map<const ledger::Reason*, std::uint64_t> known_;
    std::map<std::string_view, std::uint64_t> numbers_;
    std::vector<std::string_view> order_;
};

bool isDroppedObject(const ledger::Entry& entry) {
    return entry.property == nullptr && entry.reason->outcome == ledger::Outcome::dropped;
}

/// The data of the notation about dropped objects. Of several of a kind on one line only the first is found.
class DroppedObjects {
public:
    struct Details {
        std::string_view documentation;
        std::string_view quid;
    };

    /// Without a `notation` (null) nothing is found.
    explicit DroppedObjects(const layout::NotationTree* notation) : notation_(notation) {
        for (layout::NodeId id = 1; notation != nullptr && id < notation->size(); ++id) {
            if (const layout::Node& node = (*notation)[id]; node.kind == layout::NodeKind::object) {
                files_.resize(std::max<std::size_t>(files_.size(), node.head().file + 1));
                files_[node.head().file].objects.push_back(id);
            }
        }
        const auto place = [&](layout::NodeId id) { return placeOf(id); };
        for (File& file : files_) {
            if (!std::ranges::is_sorted(file.objects, {}, place)) { // several on one line, or a unit's content
                std::ranges::stable_sort(file.objects, {}, place);
            }
            file.areTaken.resize(file.objects.size());
        }
    }

    /// Each object's once. Takes constant time for entries in the order of the text.
    Details take(const ledger::Entry& entry) {
        if (entry.file >= files_.size()) {
            return {};
        }
        File& file = files_[entry.file];
        const Place sought{entry.place.line, entry.kind->name};
        const auto found = findFrom(file, sought);
        file.next = found;
        if (found == file.objects.size() || placeOf(file.objects[found]) != sought || file.areTaken[found]) {
            return {};
        }
        file.areTaken[found] = true;
        const layout::NodeId object = file.objects[found];
        return {notation_->text(object, "documentation"), notation_->text(object, "quid")};
    }

private:
    using Place = std::pair<std::uint64_t, std::string_view>; // the line and the kind
    struct File {
        std::vector<layout::NodeId> objects; // by their places, then in the order of the text
        std::vector<bool> areTaken;
        std::size_t next = 0; // the first that was not before the last one sought
    };

    [[nodiscard]] Place placeOf(layout::NodeId object) const {
        const layout::ObjectHead& head = (*notation_)[object].head();
        return {head.line, head.kind};
    }

    /// The first object that is not before that place: by steps that double, as it is mostly near the last one.
    [[nodiscard]] std::size_t findFrom(const File& file, const Place& sought) const {
        const std::vector<layout::NodeId>& objects = file.objects;
        std::size_t begin = file.next < objects.size() && placeOf(objects[file.next]) <= sought ? file.next : 0;
        std::size_t step = 1;
        for (; begin + step < objects.size() && placeOf(objects[begin + step]) < sought; step *= 2) {
            begin += step;
        }
        const auto first = objects.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto last = objects.begin() + static_cast<std::ptrdiff_t>(std::min(begin + step, objects.size()));
        const auto found =
            std::ranges::lower_bound(first, last, sought, {}, [&](layout::NodeId id) { return placeOf(id); });
        return static_cast<std::size_t>(found - objects.begin());
    }

    const layout::NotationTree* notation_;
    std::vector<File> files_;
};

void writeEntries(const std::deque<ledger::Entry>& entries, const layout::NotationTree* notation, CompactJson& json) {
    DroppedObjects objects(notation);
    Reasons reasons;
    json.key("entries");
    json.open('[');
    for (const ledger::Entry& entry : entries) {
        json.open('[');
        json.text(entry.kind->name);
        json.text(entry.property != nullptr ? entry.property->name : "");
        json.text(entry.name);
        json.number(static_cast<std::uint64_t>(entry.reason->outcome));
        json.number(entry.reason->weight == ledger::Weight::loss ? 1 : 0);
        json.number(reasons.numberOf(*entry.reason));
        json.text(entry.detail);
        json.number(entry.file);
        json.number(entry.place.line);
        if (isDroppedObject(entry)) {
            const DroppedObjects::Details details = objects.take(entry);
            json.text(details.documentation);
            json.text(details.quid);
        }
        json.close(']');
    }
    json.close(']');
    reasons.write(json);
}

void writePictureList(const layout::NotationTree& notation, CompactJson& json) {
    json.key("pictures");
    json.open('[');
    for (const layout::NodeId diagram : layout::diagramsOf(notation)) {
        const layout::Node& node = notation[diagram];
        json.open('[');
        json.text(node.text());
        json.text(node.name());
        json.number(node.head().file);
        json.number(node.head().line);
        json.close(']');
    }
    json.close(']');
}

void writeLedger(const exporter::ExportContext& context, CompactJson& json) {
    const ledger::KeptLedger& kept = *context.ledger;
    const ledger::Ledger& ledger = kept.ledger;
    json.key("ledger");
    json.open('{');
    writeCounts("objects", ledger.objects(), json);
    writeCounts("properties", ledger.properties(), json);
    json.key("totals");
    json.numbers({ledger.losses, ledger.badByteCount, ledger.damageCount});
    json.key("kinds");
    json.open('[');
    for (const ledger::KindTally* kind : ledger.sortedKinds()) {
        const ledger::Counts properties = kind->propertyCounts();
        json.open('[');
        json.text(kind->name);
        for (const ledger::Counts& counts : {kind->objects, properties}) {
            for (const std::uint64_t count : counts.byOutcome) {
                json.number(count);
            }
        }
        json.close(']');
    }
    json.close(']');
    json.key("damages");
    json.open('[');
    for (const ledger::DamagedPlace& damaged : ledger.damages) {
        json.open('[');
        json.number(damaged.file);
        json.number(damaged.damage.place.line);
        json.text(notation::damageText(damaged.damage));
        json.close(']');
    }
    json.close(']');
    writeEntries(kept.entries, context.notation, json);
    json.close('}');
}

} // namespace

void writePageData(const exporter::ExportContext& context, const exporter::ElementIds& ids, text::Output& output) {
    CompactJson json(output);
    json.open('{');
    writeFiles(context.getSource(), json);
    {
        const IdWriter elements(context, ids, json);
        writeKinds(elements, json);
        writeMeanings(exporter::ClassNames(context.model), elements, json);
    }
    if (context.notation != nullptr) {
        writePictureList(*context.notation, json);
    }
    if (context.ledger != nullptr) {
        writeLedger(context, json);
    }
    json.close('}');
    json.flush();
}

namespace {

class ClassNameWriter final : private exporter::ModelVisitor {
public:
    ClassNameWriter(const KelModel& model, const exporter::ElementIds& ids, text::BufferedOutput& output)
        : ids_(ids), output_(output) {
        output_.put('[');
        walkModel(model, exporter::packageParts, *this);
        output_.put(']');
    }

private:
    void enter(const KelObject& element) override {
        const bool isPackage = element.elementType == KelElementType::designPackage;
        if (!isPackage && element.elementType != KelElementType::classObject) {
            return;
        }
        line_.assign(count_ == 0 ? "[\"" : ",\n[\"").append(isPackage ? std::string_view() : ids_.viewOf(element));
        line_.append("\",");
        text::appendQuotedJson(line_, element.getName().view());
        line_.append(",");
        around_.empty() ? line_.append("-1") : line_.append(std::to_string(around_.back()));
        putWithoutTags(line_.append("]"), output_);
        if (isPackage) {
            around_.push_back(count_);
        }
        ++count_;
    }
    void leave(const KelObject& element) override {
        if (element.elementType == KelElementType::designPackage) {
            around_.pop_back();
        }
    }

    const exporter::ElementIds& ids_;
    text::BufferedOutput& output_;
    std::string line_;
    std::size_t count_ = 0;
    std::vector<std::size_t> around_; // the numbers of the packages
};

} // namespace

void writeSummary(const exporter::ExportContext& context, const exporter::ElementIds& ids,
                  text::BufferedOutput& output) {
    output.put("{\"objects\":" + std::to_string(context.objects));
    if (context.ledger != nullptr) {
        output.put(",\"losses\":" + std::to_string(context.ledger->ledger.losses));
    }
    output.put(",\"names\":");
    const ClassNameWriter writer(context.model, ids, output);
    output.put("}");
}

void writePictures(const layout::NotationTree& notation, text::BufferedOutput& output) {
    const layout::Elements elements(notation);
    for (const layout::NodeId diagram : layout::diagramsOf(notation)) {
        output.put("<script type=\"image/svg+xml\">");
        // Its texts are escaped, so nothing in it ends the block.
        layout::writeSvg(layout::makeScene(notation, elements, diagram), layout::Theme::file, output);
        output.put("</script>\n");
    }
}

} // namespace html
