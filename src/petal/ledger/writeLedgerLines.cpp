#include "petal/ledger/ledgerForms.h"
#include "text/JsonLine.h"

namespace petal {

namespace {

using ledger::Counts;
using ledger::Entry;
using ledger::Ledger;

/// One line. Empty texts are omitted.
class Line {
public:
    explicit Line(const char* entry) { text("entry", entry); }

    void text(const char* name, std::string_view value) {
        if (!value.empty()) {
            line_.text(name, value);
        }
    }
    void number(const char* name, std::uint64_t value) { line_.number(name, value); }
    void counts(const char* name, const Counts& counts) {
        line_.startObject(name);
        for (std::size_t index = 0; index < ledger::outcomeWords.size(); ++index) {
            number(ledger::outcomeWords[index], counts.byOutcome[index]);
        }
        line_.endObject();
    }
    void reason(const ledger::Reason& reason, const std::string& detail) {
        text("outcome", ledger::outcomeWords[static_cast<std::size_t>(reason.outcome)]);
        if (reason.weight == ledger::Weight::loss) {
            line_.truth("loss", true);
        }
        text("reason", reasonText(reason, detail));
    }
    void place(const Ledger& ledger, std::uint32_t file, const notation::Place& place) {
        text("file", ledger.files[file]);
        number("line", place.line);
        number("column", place.column);
    }
    void write(text::BufferedOutput& output) { output.put(line_.finish()); }

private:
    text::JsonLine line_;
};

void writeEntry(const Ledger& ledger, const Entry& entry, text::BufferedOutput& output) {
    Line line(entry.property == nullptr ? "object" : "property");
    line.place(ledger, entry.file, entry.place);
    line.text("kind", entry.kind->name);
    line.text("name", entry.name);
    line.text("property", entry.property != nullptr ? entry.property->name : "");
    line.reason(*entry.reason, entry.detail);
    line.write(output);
}

void writeGroups(const Ledger& ledger, const ledger::KindTally& kind, text::BufferedOutput& output) {
    for (const ledger::PropertyTally* property : kind.sortedProperties()) {
        for (const ledger::PropertyGroup& group : property->groups) {
            Line line("properties");
            line.number("count", group.count);
            line.place(ledger, group.file, group.first);
            line.text("kind", kind.name);
            line.text("property", property->name);
            line.reason(*group.reason, "");
            line.write(output);
        }
    }
}

void writeKind(const ledger::KindTally& kind, text::BufferedOutput& output) {
    Line line("kind");
    line.text("kind", kind.name);
    line.counts("objects", kind.objects);
    line.counts("properties", kind.propertyCounts());
    line.write(output);
}

void writeBytes(const Ledger& ledger, const ledger::BadBytes& bad, text::BufferedOutput& output) {
    Line line("bytes");
    line.place(ledger, bad.file, bad.place);
    line.text("bytes", hexText(bad.bytes));
    line.write(output);
}

void writeEnd(const Ledger& ledger, text::BufferedOutput& output) {
    for (const ledger::DamagedPlace& damaged : ledger.damages) {
        Line line("damage");
        line.place(ledger, damaged.file, damaged.damage.place);
        line.text("damage", notation::damageWord(damaged.damage.kind));
        line.text("text", notation::damageText(damaged.damage));
        line.write(output);
    }
    const std::vector<const ledger::KindTally*> kinds = ledger.sortedKinds();
    for (const ledger::KindTally* kind : kinds) {
        writeGroups(ledger, *kind, output);
    }
    for (const ledger::KindTally* kind : kinds) {
        writeKind(*kind, output);
    }
    Line total("total");
    total.counts("objects", ledger.objects());
    total.counts("properties", ledger.properties());
    total.number("losses", ledger.losses);
    total.number("badBytes", ledger.badByteCount);
    total.number("damages", ledger.damageCount);
    total.write(output);
}

} // namespace

const LedgerForm ledgerLines{writeEntry, writeBytes, writeEnd};

} // namespace petal
