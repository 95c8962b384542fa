// The ledger of the command line, and that it counts everything in a file once, as `petal info` does.

#include "Shell.h"
#include "layout/NotationTree.h"
#include "ledger/makeLedger.h"
#include "petal/info/gatherFileInfo.h"
#include "scanner/RealModels.h"
#include "source/TracedText.h"
#include "source/makeSourceMap.h"
#include "support/ImportedModel.h"
#include "support/RandomModelFile.h"
#include "support/accountFault.h"
#include "units/OpenFile.h"

#include <random>

namespace {

class LedgerCommand : public Shell {
protected:
    LedgerCommand() {
        put("m", "\n(object Petal\n version 42\n charSet 134)\n(object Design \"Logical View\"\n"
                 " root_category (object Class_Category \"Logical View\"\n logical_models (list l\n"
                 "  (object Class \"A\"\n   documentation \"\xB7 \x1b\"\n   class_attributes (list l\n"
                 "    (object ClassAttribute \"x\"\n     quid \"1\")\n    (object ClassAttribute \"x\"\n"
                 "     type \"int\"))))))\n)\n");
        put("clean", "\n(object Petal\n version 42\n charSet 0)\n");
    }
};

constexpr const char* summary = "petal: objects: 4 imported, 1 changed, 1 dropped\n"
                                "petal: properties: 4 imported, 1 changed, 3 dropped\n"
                                "petal: losses: 2, invalid byte sequences: 1, damages: 1; --ledger FILE lists them\n";

TEST_F(LedgerCommand, WritesLinesAndASummary) {
    const Ended ended = run("$petal import m --format none --ledger l");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors.substr(ended.errors.find("petal:")), summary);
    const std::string lines = get("l");
    for (
        const char* line : {
            R"({"entry":"object","file":"m","line":8,"column":3,"kind":"Class","name":"A","outcome":"imported","reason":"as a class"})",
            R"({"entry":"property","file":"m","line":9,"column":4,"kind":"Class","name":"A","property":"documentation","outcome":"changed","loss":true,"reason":"bytes invalid in the file's encoding were replaced by U+FFFD"})",
            R"({"entry":"object","file":"m","line":13,"column":5,"kind":"ClassAttribute","name":"x","outcome":"dropped","loss":true,"reason":"its class already has an attribute of that name, from line 11"})",
            R"({"entry":"bytes","file":"m","line":9,"column":19,"bytes":"b7"})",
            R"({"entry":"damage","file":"m","line":15,"column":1,"damage":"surplusClose","text":"one closing parenthesis too many, here or earlier"})",
            R"({"entry":"properties","count":1,"file":"m","line":12,"column":6,"kind":"ClassAttribute","property":"quid","outcome":"dropped","reason":"identifiers are not kept"})",
            R"({"entry":"kind","kind":"ClassAttribute","objects":{"imported":0,"changed":1,"dropped":1},"properties":{"imported":0,"changed":0,"dropped":2}})",
            R"({"entry":"total","objects":{"imported":4,"changed":1,"dropped":1},"properties":{"imported":4,"changed":1,"dropped":3},"losses":2,"badBytes":1,"damages":1})",
        }) {
        EXPECT_TRUE(has(lines, std::string(line) + "\n"));
    }
    EXPECT_EQ(run("$petal import m --format none --ledger - -q").output, lines);
    EXPECT_EQ(run("$petal import m --format none --ledger - -q --ledger-detail all | grep -c '\"entry\":\"property\"'")
                  .output,
              "8\n");
    const Ended table =
        run(R"(script -qec "$petal import m -q --format none --ledger - --log log" /dev/null | tr -d '\r')");
    EXPECT_TRUE(has(table.output, "LOST\tm:13:5\tClassAttribute x: its class already has an attribute"));
    EXPECT_FALSE(has(table.output, "\x1b"));
}

TEST_F(LedgerCommand, FailsOnWhatIsAsked) {
    const Ended ended = run(R"(for arguments in '--fail-on loss' '--fail-on encoding' '--fail-on damage' \
        '--fail-on warning,loss -q' '--fail-on warning --log-level FATAL' '--fail-on nothing' '--ledger m' \
        '--ledger out' '--ledger /missing/l'; do $petal import m -o out $arguments; printf "$? "; done
        $petal import clean -o out --fail-on loss,encoding,damage --fail-on warning; printf "$? "
        $petal import /dev/stdin -o out --ledger l <m; printf "$? "
        cat m | $petal import /dev/stdin --ledger l --format none; printf $?)");
    EXPECT_EQ(ended.output, "3 3 3 3 3 2 2 2 6 0 0 2") << ended.errors;
    EXPECT_EQ(run("rm -f kept; $petal import m -o kept --fail-on loss; test -s kept").status, 0); // all is written
}

// Each file's ledger is what it would have alone; a resumed run does again what has none that is whole.
TEST_F(LedgerCommand, GoesToAFolderForSeveralFiles) {
    ASSERT_EQ(run("$petal import m --format none --ledger alone").status, 0);
    const std::string several = "$petal import m clean missing --ledger ledgers -j 2 -q --resume --report report ";
    ASSERT_EQ(run(several + "-o models").status, 5);
    EXPECT_EQ(get("ledgers/m.ledger"), get("alone"));
    EXPECT_EQ(files("ledgers"), (Names{"m.ledger", "clean.ledger"}));
    EXPECT_TRUE(has(get("report"), "\"ledger\": \"ledgers/m.ledger\""));
    for (const char* damage : {"sed -i '$d' ledgers/m.ledger", "rm ledgers/m.ledger", "rm models/m.json"}) {
        ASSERT_EQ(run(damage).status, 0);
        EXPECT_EQ(run(several + "-o models").status, 5);
        EXPECT_TRUE(has(get("report"), "\"imported\": 1,\n    \"upToDate\": 1,"));
        EXPECT_EQ(get("ledgers/m.ledger"), get("alone"));
    }
    EXPECT_EQ(run(several + "--format none").status, 5);
    EXPECT_TRUE(has(get("report"), "\"upToDate\": 2"));
}

// What a unit holds is told of with the unit's file, and the totals are those of both files.
TEST_F(LedgerCommand, TellsOfUnitsByTheirFiles) {
    put("u.mdl", "\n(object Petal\n version 42)\n(object Design \"Logical View\"\n"
                 " root_category (object Class_Category \"Logical View\"\n logical_models (list l\n"
                 "  (object Class_Category \"P\"\n   is_unit TRUE stereotype \"s\"\n   is_loaded FALSE\n   file_name "
                 "\"p.cat\")\n"
                 "  (object Class_Category \"Q\"\n   is_unit TRUE\n   is_loaded FALSE\n   file_name \"q.cat\")\n"
                 "  (object Class_Category \"P\"\n   is_unit TRUE\n   is_loaded FALSE\n   file_name \"P.cat\"))))\n");
    put("p.cat", "\n(object Petal\n version 42)\n(object Class_Category \"P\"\n logical_models (list l\n"
                 "  (object UseCase \"U\"))\n logical_presentations \t(list l))\n");
    const std::string lines = run("$petal import u.mdl --format none --ledger -").output;
    for (
        const char* line : {
            R"("file":"u.mdl","line":7,"column":3,"kind":"Class_Category","name":"P","outcome":"imported","reason":"its content was read from the unit ./p.cat"})",
            R"("file":"./p.cat","line":4,"column":1,"kind":"Class_Category","name":"P","outcome":"imported","reason":"as a package"})",
            R"("file":"./p.cat","line":6,"column":3,"kind":"UseCase","name":"U","outcome":"dropped","reason":"use cases are not imported"})",
            R"("file":"u.mdl","line":11,"column":3,"kind":"Class_Category","name":"Q","outcome":"changed","loss":true,"reason":"its content is in a file that was not read: q.cat"})",
            R"("line":15,"column":3,"kind":"Class_Category","name":"P","outcome":"changed","reason":"its content is in the model where its file is named first: ./p.cat"})",
            R"({"entry":"total","objects":{"imported":6,"changed":2,"dropped":1},"properties")",
        }) {
        EXPECT_TRUE(has(lines, line));
    }
}

/// A reading that the places of objects and the notation tree share with the ledger gives what their own ones give, and
/// a keeper gets of `all` entries those that it wants.
void expectSharedReading(const units::UnitTree& tree, const source::Trace& trace, const KelModel& model,
                         const ledger::Choices& choices, const std::vector<ledger::Entry>& all) {
    ledger::EntryKeeper keeper;
    std::optional<source::SourceMapMaker> maker;
    std::optional<ledger::Ledger> made;
    const layout::NotationTree shared(tree, [&](notation::Listener& loader) {
        made = ledger::makeLedger(tree, trace, model, choices, &keeper, [&](source::TracedText& text) {
            text.add(maker.emplace(tree, trace, model, text));
            text.add(loader);
        });
    });
    const source::SourceMap places = maker->finish();
    const auto toTuple = [](const ledger::Entry& entry) {
        return std::tuple(entry.place.offset, entry.property != nullptr, entry.name, entry.reason, entry.detail);
    };
    std::vector<ledger::Entry> wanted;
    std::ranges::copy_if(all, std::back_inserter(wanted),
                         [&](const auto& entry) { return keeper.wants(*entry.reason); });
    EXPECT_TRUE(std::ranges::equal(keeper.getEntries(), wanted, {}, toTuple, toTuple));

    const source::SourceMap ownPlaces = source::makeSourceMap(tree, trace, model);
    EXPECT_EQ(places.getCount(), ownPlaces.getCount());
    for (const source::Fate& fate : trace.getFates()) {
        const source::SourcePlace* own = fate.object != nullptr ? ownPlaces.find(*fate.object) : nullptr;
        if (own != nullptr) {
            const source::SourcePlace* place = places.find(*fate.object);
            ASSERT_NE(place, nullptr);
            EXPECT_EQ(std::tie(place->begin.offset, place->end, place->quid),
                      std::tie(own->begin.offset, own->end, own->quid));
        }
    }
    const layout::NotationTree own(tree);
    ASSERT_EQ(shared.size(), own.size());
    EXPECT_EQ(shared.getDamages().first, own.getDamages().first);
    for (layout::NodeId id = 0; id < own.size(); ++id) {
        EXPECT_EQ(std::tie(shared[id].kind, shared[id].parent, shared[id].next, shared[id].first),
                  std::tie(own[id].kind, own[id].parent, own[id].next, own[id].first));
        EXPECT_EQ(shared.text(id, "documentation"), own.text(id, "documentation"));
    }
}

void expectCountsOfInfo(const std::string& path) {
    SCOPED_TRACE(path);
    units::OpenFile file(path);
    const petal::FileInfo info = petal::gatherFileInfo(file);
    if (!info.isModel) {
        return; // nothing else is told of it
    }
    units::UnitTree tree;
    tree.files.push_back({path, 0, {}, {}});
    const char* encoding = info.encoding != nullptr ? info.encoding : "windows-1252";
    source::Trace trace;
    ImportedModel imported = ImportedModel::ofFile(path, {"C++", encoding});
    trace.locate(nullptr);
    using ledger::Detail;
    std::set<std::pair<std::uint64_t, std::uint64_t>> totals;
    for (const Detail detail : {Detail::all, Detail::named, Detail::counts}) {
        KeptEntries kept;
        const ledger::Ledger made = ledger::makeLedger(tree, trace, imported.model, {encoding, false, detail}, &kept);
        EXPECT_EQ(accountFault(made, imported.model), "");
        std::map<std::string, std::uint64_t, std::less<>> objects;
        for (const ledger::KindTally* kind : made.sortedKinds()) {
            objects[kind->name] += kind->objects.total();
        }
        std::erase_if(objects, [](const auto& kind) { return kind.second == 0; }); // the file lacks their beginning
        EXPECT_EQ(objects, info.objects);
        EXPECT_EQ(made.properties().total(), info.propertyCount);
        EXPECT_EQ(made.damageCount, info.damageCount);
        totals.emplace(made.losses, made.badByteCount);
        EXPECT_TRUE(areInOrder(kept.entries));
        if (detail == Detail::named) {
            expectSharedReading(tree, trace, imported.model, {encoding, false, detail}, kept.entries);
        } else { // the others do not group properties
            EXPECT_EQ(kept.entries.size(), detail == Detail::all ? info.objectCount + info.propertyCount : 0);
        }
    }
    EXPECT_EQ(totals.size(), 1U);
}

/// The text with some of its pieces lost, repeated or overwritten.
std::string mutated(std::string text, unsigned int seed) {
    std::mt19937 random(seed);
    for (int change = 0; change < 6; ++change) {
        const std::size_t at = 40 + random() % (text.size() - 40);
        const std::string marks[] = {"(", ")", "\"", "\n", "|", "@", "\x80", ""};
        const std::string piece = text.substr(random() % text.size(), random() % 200);
        text.replace(at, random() % 3 == 0 ? 200 : 1, random() % 2 == 0 ? piece : marks[random() % std::size(marks)]);
    }
    return text;
}

TEST_F(LedgerCommand, CountsAsInfoDoes) {
    for (const auto& example : std::filesystem::directory_iterator(PETAL_EXAMPLES)) {
        if (example.is_regular_file()) {
            expectCountsOfInfo(example.path());
            for (unsigned int seed = 1; seed <= 60; ++seed) {
                expectCountsOfInfo(put("mutated" + std::to_string(seed), mutated(get(example.path().string()), seed)));
            }
        }
    }
    for (unsigned int seed = 1; seed <= 60; ++seed) {
        const std::string body = RandomModelFile(seed, RandomModelFile::Kind::wild).getBody();
        expectCountsOfInfo(put("random" + std::to_string(seed), std::string(petalHeader) + body));
    }
    for (const auto& model : rose::test::realModels()) {
        expectCountsOfInfo(model.string());
    }
}

} // namespace
