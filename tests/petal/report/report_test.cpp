#include "petal/jobs/Archive.h"
#include "petal/jobs/Console.h"
#include "petal/jobs/ImportEnd.h"
#include "petal/report/reports.h"
#include "petal/report/summary.h"

namespace {

using petal::FileReport;
using petal::FileState;

FileReport fileReport(const std::string& name, FileState state, std::uint64_t objects) {
    FileReport file;
    file.file = name;
    file.state = state;
    file.counts.objects = objects;
    return file;
}

TEST_F(Archive, AReportReadsBackAsItWasWritten) {
    FileReport full = fileReport("caf\xC3\xA9 \"q\"", FileState::failed, 1);
    full.output = "out";
    full.ledger = "ledger";
    full.reason = "crashed";
    full.text = "line\nline";
    full.exitStatus = 2;
    full.signal = 11;
    full.counts.events = {1, 2, 3, 4, 5};
    full.counts.dropped = ~std::uint64_t{0} >> 1;
    full.counts.losses = 8;
    full.counts.unitsFound = 6;
    full.counts.unitsMissing = 7;
    const auto write = [&](const std::string& name, const std::vector<FileReport>& files) {
        const auto output = petal::ModelOutput::open(pathOf(name));
        petal::writeReport(files, *output);
        output->commit();
    };
    FileReport latin = fileReport("latin \xE9", FileState::upToDate, 0);
    latin.counts.dropped = full.counts.dropped; // both together are more than a report can tell
    write("1", {full, latin});
    EXPECT_FALSE(contains(get("1"), ": -"));
    const std::vector<FileReport> read = petal::readReport(pathOf("1"));
    EXPECT_EQ(read.at(1).file, "latin \\xe9");
    EXPECT_EQ(read.at(0).counts.events, full.counts.events);
    write("2", read);
    EXPECT_EQ(get("1"), get("2"));
}

TEST(Report, MergingKeepsWhatWasTriedLast) {
    using enum FileState;
    const std::vector<FileReport> all =
        petal::merged({{fileReport("a", imported, 1), fileReport("b", failed, 2), fileReport("c", notStarted, 0)},
                       {fileReport("d", upToDate, 0), fileReport("a", upToDate, 0), fileReport("b", imported, 3)},
                       {fileReport("c", failed, 0), fileReport("a", notStarted, 0), fileReport("d", notStarted, 0)}});
    struct Row {
        const char* file;
        FileState state;
        std::uint64_t objects;
    };
    constexpr Row rows[] = {{"a", imported, 1}, {"b", imported, 3}, {"c", failed, 0}, {"d", notStarted, 0}};
    ASSERT_EQ(all.size(), std::size(rows));
    for (std::size_t index = 0; index < all.size(); ++index) {
        EXPECT_EQ(all[index].file, rows[index].file);
        EXPECT_EQ(all[index].state, rows[index].state) << rows[index].file;
        EXPECT_EQ(all[index].counts.objects, rows[index].objects);
    }
}

TEST_F(Archive, MergesReportsOfParts) {
    for (int number = 0; number < 6; ++number) {
        put("m" + std::to_string(number) + ".mdl", number == 3 ? "throw [X] broken\n" : good);
    }
    const Ended ended =
        run("ls *.mdl >list; $petal import --files-from list -o out -q --report whole; head -n 2 list | $petal import "
            "--files-from - -o out -q --report 1; tail -n +3 list | $petal import --files-from - -o out -q --report 2; "
            "$petal report merge 1 2 -o merged && cmp merged whole && $petal report merge whole | cmp - whole");
    EXPECT_EQ(ended.status, 0) << ended.errors << ended.output;
    struct Row {
        const char* contents;
        const char* errors;
    };
    constexpr Row rows[] = {
        {"", "it is no JSON object"},
        {"[]", "it is no JSON object"},
        {"{}", "its format is not version 1 of petal-report"},
        {R"({"format":"petal-report","formatVersion":2,"files":[]})", "its format is not version 1"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{}]})", "an element of files has no name"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{"file":1,"state":"failed"}]})", "file is no text"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{"file":"a","state":"x"}]})", "there is no state 'x'"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{"file":"a","state":"failed","signal":-1}]})",
         "signal is no number"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{"file":"a","state":"failed","objects":"1"}]})",
         "objects is no number"},
        {R"({"format":"petal-report","formatVersion":1,"files":[{"file":"a","state":"failed","objects":9223372036854775808}]})",
         "objects is no number"},
    };
    for (const Row& row : rows) {
        put("bad", row.contents);
        const Ended refused = run("$petal report merge whole bad -o new");
        EXPECT_EQ(refused.status, 1);
        EXPECT_TRUE(contains(refused.errors, std::string("petal: 'bad' is no report: ") + row.errors))
            << refused.errors;
        EXPECT_EQ(get("new"), "(none)");
    }
}

TEST(ImportEnd, GoesThroughAPipeWholeOrNotAtAll) {
    petal::ImportEnd end;
    end.outcome = petal::Outcome::outputFailed;
    end.text = std::string("te\0xt", 5);
    end.advice = "advice";
    end.result.objects = 7;
    const units::ModelLosses losses{.units = {{units::UnitFault::absent, "$X\\a.cat", "folder", "place", ""}, {}},
                                    .untold = 3,
                                    .provenSymbols = {"y", "z"}};
    const std::string ahead = petal::encoded(losses) + petal::encoded(losses);
    const std::string bytes = petal::encoded(end);
    for (std::size_t length = 0; length < ahead.size() + bytes.size(); ++length) {
        const petal::ImportMessage cut = petal::decoded((ahead + bytes).substr(0, length));
        EXPECT_FALSE(cut.end) << length;
        EXPECT_EQ(cut.losses.size(), std::min<std::size_t>(length * 2 / ahead.size(), 2)) << length;
    }
    const petal::ImportMessage message = petal::decoded(ahead + bytes);
    ASSERT_EQ(message.losses.size(), 2U);
    EXPECT_EQ(petal::encoded(message.losses[1]), petal::encoded(losses));
    const auto& back = message.end;
    ASSERT_TRUE(back);
    EXPECT_EQ(petal::encoded(*back), bytes);
    EXPECT_EQ(back->text, end.text);
    EXPECT_EQ(back->advice, end.advice);
    EXPECT_EQ(back->result.objects, 7U);
}

TEST(Summary, TellsTheFirstFailuresAndCountsTheRest) {
    std::vector<FileReport> files(25, fileReport("m\x1B", FileState::failed, 0));
    for (FileReport& file : files) {
        file.reason = "crash\x9D";
        file.text = "broken";
    }
    const std::string text = petal::summary(files, false);
    EXPECT_TRUE(contains(text, "  crash\\x9d               25\n  m\\x1b: broken\n")) << text;
    EXPECT_TRUE(contains(text, "  ... and 5 more\n")) << text;
}

TEST(Progress, TellsRateAndTimeLeft) {
    struct Row {
        petal::ProgressCounts counts;
        double seconds;
        const char* text;
    };
    constexpr Row rows[] = {
        {{0, 10, 0}, 5, "0 of 10 files"},
        {{5, 10, 0}, 2.5, "5 of 10 files, 2/s, 0:02 left"},
        {{10, 10, 3}, 4, "10 of 10 files, 2.5/s, 0:00 left, 3 failed"},
        {{100, 100'100, 0}, 10, "100 of 100100 files, 10/s, 2:46:40 left"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(petal::progressText(row.counts, row.seconds), row.text);
    }
}

} // namespace
