#include "catalog/modelRows.h"

#include "catalog/elementRows.h"
#include "catalog/sourceRows.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"
#include "source/makeSourceMap.h"
#include "units/localText.h"

#include <filesystem>
#include <set>

namespace catalog {

namespace {

/// The file as the catalogue names it, wherever the model is.
std::string relativeName(const std::filesystem::path& file, const std::filesystem::path& model) {
    const std::filesystem::path folder = std::filesystem::absolute(model).lexically_normal().parent_path();
    return std::filesystem::absolute(file).lexically_normal().lexically_relative(folder).generic_string();
}

/// The losses and the outcomes of a ledger.
class Outcomes final : public ledger::EntrySink {
public:
    void take(const ledger::Ledger& /*ledger*/, const ledger::Entry& entry) override {
        all.push_back({entry.file, entry.place.offset, entry.reason});
        if (entry.reason->weight == ledger::Weight::loss) {
            losses.push_back(entry);
        }
    }

    std::vector<OutcomeAt> all;
    std::vector<ledger::Entry> losses;
};

void writeModel(const KnownModel& known, RowWriter& rows, std::string_view name, std::string_view encoding,
                const ledger::Ledger* ledger, std::string_view documentation) {
    rows.start(TableId::model);
    rows.name(name);
    rows.name(known.path);
    rows.integer(static_cast<std::int64_t>(known.facts.size));
    rows.text(known.facts.modified);
    rows.text(known.facts.hash);
    rows.text(encoding);
    rows.text(known.version);
    rows.text(known.reading);
    rows.text(known.isImported ? "imported" : "failed");
    rows.text(known.failure);
    if (ledger != nullptr) {
        rows.integer(static_cast<std::int64_t>(ledger->losses));
        rows.integer(static_cast<std::int64_t>(ledger->damageCount));
    } else {
        rows.null();
        rows.null();
    }
    rows.text(documentation);
}

void writeUnit(const KnownUnit& unit, RowWriter& rows) {
    rows.start(TableId::unit);
    rows.name(unit.name);
    rows.reference(1);
    rows.name(unit.path);
    rows.name(unit.kind);
    rows.flag(unit.isFound);
    rows.text(unit.remark);
    if (unit.isFound) {
        rows.integer(static_cast<std::int64_t>(unit.facts.size));
    } else {
        rows.null();
    }
    rows.text(unit.facts.modified);
    rows.text(unit.facts.hash);
}

void writeOrigins(const ImportedParts& parts, const KnownModel& known, RowWriter& rows) {
    for (const KelMetadataOrigin* origin : parts.model.metadataOrigins()) {
        rows.start(TableId::origin);
        rows.name(origin->toolName.view());
        rows.reference(1);
        rows.text(origin->sourceEncoding.view());
        rows.text(origin->sourceFormat.view());
        rows.text(known.path);
        rows.text(origin->sourceKind.view());
        rows.text(origin->vendorName.view());
        rows.text(origin->toolVersions.view());
        rows.text(origin->toolWeb.view());
        rows.text(origin->methodologySummary.view());
        rows.text(origin->bridgeId.view());
    }
}

void writeLosses(const Outcomes& outcomes, const std::vector<std::string>& files, RowWriter& rows) {
    for (const ledger::Entry& loss : outcomes.losses) {
        rows.start(TableId::loss);
        rows.name(loss.name);
        rows.reference(1);
        rows.name(loss.kind->name);
        rows.text(loss.property != nullptr ? std::string_view(loss.property->name) : std::string_view());
        rows.text(ledger::outcomeWords[static_cast<std::size_t>(loss.reason->outcome)]);
        rows.text(loss.reason->text);
        rows.text(loss.detail);
        rows.text(files[loss.file]);
        rows.integer(static_cast<std::int64_t>(loss.place.line));
        rows.integer(static_cast<std::int64_t>(loss.place.column));
    }
}

void writeDamages(const ledger::Ledger& ledger, const std::vector<std::string>& files, RowWriter& rows) {
    for (const ledger::DamagedPlace& damaged : ledger.damages) {
        rows.start(TableId::damage);
        rows.name(notation::damageWord(damaged.damage.kind));
        rows.reference(1);
        rows.text(notation::damageText(damaged.damage));
        rows.text(files[damaged.file]);
        rows.integer(static_cast<std::int64_t>(damaged.damage.place.line));
        rows.integer(static_cast<std::int64_t>(damaged.damage.place.column));
    }
}

std::string_view encodingOf(const KelModel& model) {
    for (const KelMetadataOrigin* origin : model.metadataOrigins()) {
        return origin->sourceEncoding.view();
    }
    return {};
}

} // namespace

void writeModelRows(const ImportedParts& parts, const KnownModel& known, RowWriter& rows) {
    Outcomes outcomes;
    ledger::Choices choices = parts.choices;
    choices.detail = parts.source == SourceDetail::none ? ledger::Detail::named : ledger::Detail::all;
    const ledger::Ledger ledger = ledger::makeLedger(parts.tree, parts.trace, parts.model, choices, &outcomes);
    std::vector<std::string> files{""};
    for (std::size_t file = 1; file < parts.tree.files.size(); ++file) {
        files.push_back(relativeName(parts.tree.files[file].path, parts.tree.files.front().path));
    }
    writeModel(known, rows, parts.model.getName().view(), encodingOf(parts.model), &ledger,
               parts.model.description.view());
    for (const KnownUnit& unit : known.units) {
        writeUnit(unit, rows);
    }
    writeOrigins(parts, known, rows);
    writeLosses(outcomes, files, rows);
    writeDamages(ledger, files, rows);
    if (parts.source != SourceDetail::none) {
        SourceRows source(parts, outcomes.all, rows);
        const source::SourceMap places = source.read();
        source.writeObjects(files, writeElementRows(parts, places, files, rows));
    } else {
        const source::SourceMap places = source::makeSourceMap(parts.tree, parts.trace, parts.model);
        static_cast<void>(writeElementRows(parts, places, files, rows));
    }
    rows.finish();
}

void writeFailedRow(const KnownModel& known, RowWriter& rows) {
    writeModel(known, rows, std::filesystem::path(known.path).stem().string(), "", nullptr, "");
    rows.finish();
}

std::vector<KnownUnit> unitsOf(const units::UnitTree& tree) {
    const std::filesystem::path& model = tree.files.front().path;
    std::vector<KnownUnit> units;
    std::set<std::string> known;
    for (const units::ResolvedFile& file : tree.files) {
        KelTextDecoder decoder(units::encodingOf(file.contents.charSet));
        for (const units::Unit& unit : file.units) {
            KnownUnit one;
            one.name = decoder.toUtf8(unit.reference.name);
            one.kind = unit.reference.kind;
            one.isFound = unit.state == units::UnitState::found;
            one.remark = unit.remark;
            if (!unit.path.empty()) {
                one.path = relativeName(unit.path, model);
                one.file = unit.path.string();
            } else {
                one.path = unit.name.symbol.empty() || unit.name.symbol == "CURDIR" ? "" : "$" + unit.name.symbol + "/";
                for (const std::string& part : unit.name.parts) {
                    one.path.append(&part == &unit.name.parts.front() ? "" : "/").append(part);
                }
            }
            if (!one.isFound && !isLost(unit)) {
                continue; // its file is there already
            }
            if (known.insert(one.path).second) {
                units.push_back(std::move(one));
            }
        }
    }
    return units;
}

} // namespace catalog
