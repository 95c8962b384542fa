#include "ledgerFault.h"

#include "notation/Reader.h"
#include "petal/info/gatherFileInfo.h"
#include "petal/ledger/ledgerForms.h"
#include "require.h"
#include "support/Written.h"
#include "support/accountFault.h"
#include "textFault.h"
#include "units/OpenFile.h"

#include <algorithm>
#include <memory>
#include <sstream>

namespace fuzz {

namespace {

std::string written(const ledger::Ledger& ledger, const std::vector<ledger::Entry>& entries,
                    std::unique_ptr<petal::LedgerForm> form) {
    MemoryOutput output;
    text::BufferedOutput buffered(output);
    for (const ledger::Entry& entry : entries) {
        form->writeEntry(ledger, entry, buffered);
    }
    form->writeEnd(ledger, buffered);
    buffered.flush();
    return output.text;
}

std::uint64_t countGrouped(const ledger::Ledger& ledger) {
    std::uint64_t count = 0;
    for (const ledger::KindTally* kind : ledger.sortedKinds()) {
        for (const ledger::PropertyTally* property : kind->sortedProperties()) {
            for (const ledger::PropertyGroup& group : property->groups) {
                count += group.count;
            }
        }
    }
    return count;
}

std::string formFault(const ledger::Ledger& ledger, const std::vector<ledger::Entry>& entries) {
    std::istringstream lines(written(ledger, entries, petal::makeLedgerLines()));
    for (std::string line; std::getline(lines, line);) {
        if (std::string fault = jsonFault(line); !fault.empty()) {
            return "in a ledger's line: " + fault;
        }
    }
    std::string table = written(ledger, entries, petal::makeLedgerTable());
    std::ranges::replace(table, '\t', ' '); // what stands between its columns
    return textFault(table + petal::ledgerSummary(ledger));
}

} // namespace

void SourceCounts::add(const units::ResolvedFile& file) {
    units::OpenFile source(file.path);
    notation::Reader reader(source);
    SourceCounts here;
    while (reader.next()) {
        const notation::Event& event = reader.event();
        const bool isObject =
            event.kind == notation::EventKind::start && event.construct == notation::Construct::object;
        here.objects += isObject && !event.isImplied ? 1 : 0;
        here.properties += event.isProperty() ? 1 : 0;
    }
    source.seek(0);
    const petal::FileInfo info = petal::gatherFileInfo(source);
    const bool isSame = info.objectCount == here.objects && info.propertyCount == here.properties;
    require(isSame || !info.isModel, "petal info counts otherwise");
    objects += here.objects;
    properties += here.properties;
}

std::string ledgerFault(const ledger::Ledger& ledger, const std::vector<ledger::Entry>& entries, ledger::Detail detail,
                        const SourceCounts& there) {
    using ledger::Detail;
    if (SourceCounts{ledger.objects().total(), ledger.properties().total()} != there) {
        return "a ledger counts otherwise";
    }
    const std::uint64_t all = there.objects + there.properties;
    const std::uint64_t grouped = countGrouped(ledger);
    const std::uint64_t told = entries.size();
    const bool isAllTold = detail == Detail::all ? told == all : detail == Detail::counts || told + grouped == all;
    if (!isAllTold) {
        return "a ledger does not tell of all";
    }
    if (!areInOrder(entries)) {
        return "a ledger is out of order";
    }
    return formFault(ledger, entries);
}

} // namespace fuzz
