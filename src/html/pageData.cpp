#include "html/pageData.h"

#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/Exporter.h"
#include "export/modelWalk.h"
#include "host/model/KelClass.h"
#include "host/model/KelNumbering.h"
#include "host/model/KelType.h"
#include "layout/makeScene.h"
#include "layout/write.h"
#include "ledger/Ledger.h"
#include "source/SourceMap.h"
#include "text/escape.h"

#include <filesystem>
#include <initializer_list>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace html {

namespace {

/// Writes JSON without blanks. Callers put the brackets and the keys.
class CompactJson {
public:
    explicit CompactJson(text::BufferedOutput& output) : output_(output) {}

    void open(char bracket) {
        separate();
        output_.put(bracket);
        isFirst_ = true;
    }
    void close(char bracket) {
        output_.put(bracket);
        isFirst_ = false;
    }
    void key(std::string_view name) {
        text(name);
        output_.put(':');
        isFirst_ = true;
    }
    void text(std::string_view value) {
        separate();
        output_.put(text::quotedJsonText(value));
    }
    void number(std::uint64_t value) {
        separate();
        output_.put(std::to_string(value));
    }
    void numbers(std::initializer_list<std::uint64_t> values) {
        open('[');
        for (const std::uint64_t value : values) {
            number(value);
        }
        close(']');
    }

private:
    void separate() {
        if (!isFirst_) {
            output_.put(',');
        }
        isFirst_ = false;
    }

    text::BufferedOutput& output_;
    bool isFirst_ = true;
};

/// Numbers the elements as the JSON document does, and writes their ids.
class IdWriter final : private exporter::ModelVisitor {
public:
    IdWriter(const exporter::ExportContext& context, const exporter::ElementIds& ids, CompactJson& json)
        : ids_(ids), source_(context.source), json_(json) {
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
        if (const auto* one = dynamic_cast<const KelClass*>(&element)) {
            classes_.push_back(one);
        } else if (const auto* type = dynamic_cast<const KelType*>(&element)) {
            types_.push_back(type);
        }
        const std::string id = ids_.idOf(element);
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
        const auto [found, isNew] = numbers_.try_emplace(reason.text, order_.size());
        if (isNew) {
            order_.emplace_back(reason.text);
        }
        return found->second;
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
    DroppedObjects(const std::vector<ledger::Entry>& entries, const layout::NotationTree* notation) {
        if (notation == nullptr) {
            return;
        }
        for (const ledger::Entry& entry : entries) {
            if (isDroppedObject(entry)) {
                details_.try_emplace(keyOf(entry));
            }
        }
        for (layout::NodeId id = 1; id < notation->size(); ++id) {
            const layout::Node& node = (*notation)[id];
            if (node.kind != layout::NodeKind::object) {
                continue;
            }
            const auto found = details_.find({node.head().file, node.head().line, node.text()});
            if (found != details_.end() && !found->second) {
                found->second = {notation->text(id, "documentation"), notation->text(id, "quid")};
            }
        }
    }

    /// Each object's once.
    Details take(const ledger::Entry& entry) {
        const auto found = details_.find(keyOf(entry));
        return found != details_.end() && found->second ? *std::exchange(found->second, Details()) : Details();
    }

private:
    using Key = std::tuple<std::uint32_t, std::uint64_t, std::string_view>; // file, line, kind

    static Key keyOf(const ledger::Entry& entry) { return {entry.file, entry.place.line, entry.kind->name}; }

    std::map<Key, std::optional<Details>> details_;
};

void writeEntries(const std::vector<ledger::Entry>& entries, const layout::NotationTree* notation, CompactJson& json) {
    DroppedObjects objects(entries, notation);
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

void writePageData(const exporter::ExportContext& context, const exporter::ElementIds& ids,
                   text::BufferedOutput& output) {
    CompactJson json(output);
    json.open('{');
    writeFiles(context.source, json);
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
}

namespace {

class ClassNameWriter final : private exporter::ModelVisitor {
public:
    ClassNameWriter(const KelModel& model, const exporter::ElementIds& ids, text::BufferedOutput& output)
        : ids_(ids), output_(output) {
        output_.put('[');
        walkModel(model, exporter::documentParts, *this);
        output_.put(']');
    }

private:
    void enter(const KelObject& element) override {
        const bool isPackage = element.elementType == KelElementType::designPackage;
        if (!isPackage && element.elementType != KelElementType::classObject) {
            return;
        }
        const std::string owner = around_.empty() ? "-1" : std::to_string(around_.back());
        const std::string id = isPackage ? "" : ids_.idOf(element);
        put((count_ == 0 ? "" : ",\n") + ("[\"" + id + "\",") + text::quotedJsonText(element.getName().view()) + "," +
            owner + "]");
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

    void put(std::string_view json) {
        for (const char byte : json) {
            if (byte == '<') {
                output_.put("\\u003c");
            } else {
                output_.put(byte);
            }
        }
    }

    const exporter::ElementIds& ids_;
    text::BufferedOutput& output_;
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
