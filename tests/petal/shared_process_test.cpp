// Imports of small files, of which one process does several.

#include "Shell.h"

#include <algorithm>
#include <array>

namespace {

class SharedProcess : public FakeBridge {
protected:
    static constexpr int fileCount = 40; // with -j 1, up to ten to a process

    static std::string nameOf(int number) { return "a/m" + std::to_string(100 + number) + ".mdl"; }
    /// Makes the files, each of which logs a line, says another and does what `order` says for its number.
    template <class Order>
    void putFiles(Order order) const {
        for (int number = 0; number < fileCount; ++number) {
            const std::string mark = std::to_string(number);
            std::string text = good;
            text.append("log WARNING l").append(mark).append("\nsay s").append(mark).append("\n").append(order(number));
            put(nameOf(number), text + "\n");
        }
    }
};

// A file that fails does so by itself, and all others have the outputs and lines that they have alone.
TEST_F(SharedProcess, EachFileIsAsIfAlone) {
    constexpr std::array orders{"throw [X] broken", "exit 2", "crash", "hang pid", "classes 20000", "first"};
    putFiles([&](int number) { return number % 3 == 1 && number < 36 ? orders.at(number / 3 % orders.size()) : ""; });
    for (const std::string jobs : {"1", "20"}) { // with 20 each has a process
        const Ended ended = run("n=" + jobs +
                                "; ulimit -f 64; $petal import a -o out --ledger ledgers --timeout 1 --log log$n "
                                "--report report$n -j $n 2>&1 | sort > lines$n; mv out out$n; sort log$n -o log$n");
        EXPECT_EQ(ended.status, 0) << ended.errors;
    }
    EXPECT_EQ(run("cmp report1 report20; cmp lines1 lines20; cmp log1 log20; diff -r out1 out20").output, "");
    EXPECT_EQ(files("out1").size(), 30U) << "all but two of each kind that fails";
    EXPECT_EQ(run("grep -c '^a/m[0-9]*.mdl: s[0-9]*$' lines1; wc -l < log1").output, "40\n40\n");
    putFiles([](int number) { return number == 1 ? "later" : ""; });
    EXPECT_EQ(run("$petal import a --format none").status, 0) << "a process has several files";
    EXPECT_EQ(run("$petal import a --format none -j 20").status, 5) << "or one";
}

TEST_F(SharedProcess, FailFastKeepsWhatIsBeforeTheFailure) {
    putFiles([](int number) { return number == 25 ? "crash" : ""; });
    for (const std::string jobs : {"1", "3"}) {
        EXPECT_EQ(run("rm -rf out; $petal import a -o out --fail-fast -j " + jobs).status, 5);
        EXPECT_EQ(files("out").size(), 25U);
    }
}

// Outputs are put in place some at a time: none that is there is incomplete, and none waits for the end.
TEST_F(SharedProcess, AKilledRunKeepsWhatIsInPlaceAndTheNextCompletesIt) {
    putFiles([](int number) { return number == 20 ? "hang pid" : ""; });
    const std::pair<const char*, const char*> rows[] = {
        {"KILL", "for i in $(seq 1000); do [ -e out/a/m119.mdl.json ] && break; sleep 0.01; done; "},
        {"TERM", "sleep 0.3; "}, // when the outputs of less than a second are not in place yet
    };
    for (const auto& [signal, wait] : rows) {
        const Ended killed = run(std::string("rm -rf out pid; ulimit -c 0; $petal import a -o out -q 2>/dev/null & "
                                             "while [ ! -s pid ]; do sleep 0.01; done; ") +
                                 wait + "kill -" + signal + " $!; wait $!; ls out/a | grep -c json");
        EXPECT_EQ(killed.output, "20\n") << signal;
        const Ended next = run("$petal import a -o out -q --resume --timeout 0.5 --report report");
        EXPECT_EQ(next.status, 5);
        const Lines states = statesIn("report");
        EXPECT_EQ(std::ranges::count_if(states, [](const std::string& state) { return state.ends_with("upToDate"); }),
                  20);
        EXPECT_EQ(std::ranges::count_if(states, [](const std::string& state) { return state.ends_with("imported"); }),
                  19);
        EXPECT_EQ(files("out").size(), 39U) << "and no temporary file";
        EXPECT_EQ(run("$petal import a -o whole -q --timeout 0.5; diff -r out whole").output, "");
    }
}

} // namespace
