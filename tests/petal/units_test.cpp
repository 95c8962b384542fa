#include "Shell.h"
#include "petal/units/lossLines.h"

#include <algorithm>
#include <span>

namespace {

constexpr const char* model = R"((object Petal version 42 charSet 0)
(object Design "Logical View"
    root_category (object Class_Category "Logical View"
	logical_models (list unit_reference_list
	    (object Class_Category "sales" is_unit TRUE is_loaded FALSE file_name "$SHOP\\Sales.CAT")
	    (object Class_Category "gone" is_unit TRUE is_loaded FALSE file_name "$SHOP\\gone.cat")
	    (object Class_Category "after"
		logical_presentations 	(list unit_reference_list)))
	logical_presentations 	(list unit_reference_list)))
)";
constexpr const char* unit = R"((object Petal version 42 charSet 0)
(object Class_Category "sales"
    logical_models (list unit_reference_list
	(object Class "Order"))
    logical_presentations 	(list unit_reference_list))
)";

class Units : public Shell {
protected:
    Units() {
        put("m.mdl", model);
        put("shop/sales.cat", unit);
    }
};

TEST_F(Units, AreImportedInTheirPlaces) {
    const Ended whole = run("$petal import m.mdl -q --path-map SHOP=shop --format tree");
    EXPECT_EQ(whole.status, 0);
    EXPECT_EQ(whole.output.substr(0, whole.output.find(" (")), "model m\n  origin: m.mdl");
    EXPECT_EQ(whole.output.substr(whole.output.find("  package")), "  package Logical View\n"
                                                                   "    package sales\n"
                                                                   "      class Order\n"
                                                                   "    package gone\n"
                                                                   "    package after\n");
    EXPECT_EQ(whole.errors, "WARNING: [PETAL_W0001] Controlled unit gone (line 6) is not read: there is no such file: "
                            "$SHOP\\gone.cat\n");
    const char* sameByOtherMeans[]{"SHOP=shop $petal import m.mdl --format tree",
                                   "$petal import --unit-dir . m.mdl --format tree"};
    for (const char* command : sameByOtherMeans) {
        EXPECT_EQ(run(command).output, whole.output) << command;
    }
    EXPECT_EQ(run("$petal import m.mdl -q --units skip --format tree").errors, "");
    const std::string imported =
        run("TMPDIR=/missing $petal import m.mdl -q --path-map SHOP=shop --format tree").output;
    EXPECT_EQ(imported, whole.output) << "a small text is assembled in memory";
    put("m.mdl", model + std::string(1'000'000, '\n'));
    EXPECT_EQ(run("TMPDIR=/missing $petal import m.mdl --path-map SHOP=shop").status, 6);
    const std::string large = run("$petal import m.mdl -q --path-map SHOP=shop --format tree").output;
    EXPECT_EQ(large.substr(large.find("  package")), whole.output.substr(whole.output.find("  package")));
    EXPECT_EQ(files(), (Names{"m.mdl", "shop/sales.cat"}));
}

TEST_F(Units, AreRequiredOrNotOverwritten) {
    std::filesystem::create_symlink("shop/sales.cat", pathOf("link"));
    constexpr const char* overwritten = "petal: writing 'link' would overwrite 'shop/sales.cat'\n";
    expectRefusals("SHOP=shop $petal import m.mdl -q ",
                   {
                       {"--units require", 4, "controlled units of 'm.mdl' are missing"},
                       {"--path-map SHOP", 2, "SHOP"},
                       {"-o link", 2, overwritten},
                       {"--log link --in-process", 2, overwritten},
                       {"--ledger link --timeout 60", 2, overwritten},
                       {"--report link", 2, overwritten},
                   });
    put("shop/gone.cat", "(object Petal version 42)(object Class_Category \"gone\")");
    EXPECT_EQ(run("$petal import m.mdl --units require --path-map SHOP=shop").status, 0);
}

TEST_F(Units, MayNotKeepPetalWaiting) {
    const std::string pattern = "$SHOP\\\\Sales.CAT";
    for (const std::string name : {"pipe", "/dev/zero", "link"}) {
        std::string hostile = model;
        put("hostile.mdl", hostile.replace(hostile.find(pattern), pattern.size(), name));
        const Ended ended =
            run("mkfifo pipe; ln -sf /dev/zero link; timeout 20 $petal import hostile.mdl -q >/dev/null; "
                "echo $?; timeout 20 $petal units hostile.mdl");
        EXPECT_EQ(ended.output.find("0\n"), 0U);
        EXPECT_TRUE(has(ended.output, name + "\n    missing: there is no such file\n"));
    }
}

TEST_F(Units, TheRootMayHaveAnotherName) {
    const std::string renamed = "(object Petal version 42 charSet 204)\n"
                                R"((object Design "Logical View"
    root_category (object Class_Category "%"
	logical_models (list unit_reference_list
	    (object Class "Base")
	    (object Class "Derived"
		superclasses (list inheritance_relationship_list (object Inheritance_Relationship supplier "%::Base")))
	    (object Class_Category "sales" is_unit TRUE is_loaded FALSE file_name "shop/sales.cat"))
	logical_presentations (list unit_reference_list
	    (object ClassDiagram "Main"
		items (list diagram_item_list (object ClassView "Class" "%::Base" @1)))))))
)";
    put("r.template", renamed);
    const Ended ended = run("sed 's/%/\\xC2\\xE8\\xE4/' r.template >r.mdl; sed '/sales/s/.*/)/' r.mdl >s.mdl;"
                            "$petal import r.mdl -q --format tree --log-level STATUS; $petal import s.mdl -q -f tree");
    const std::string classes = "    class Base\n    class Derived\n    generalization: Derived -> Base\n"
                                "    diagram Main\n      shows class Base\n";
    EXPECT_TRUE(has(ended.output, "  package Вид\n    package sales\n      class Order\n" + classes + "model"));
    EXPECT_TRUE(ended.output.ends_with("  package Вид\n" + classes)) << ended.output;
    EXPECT_TRUE(
        has(ended.errors, "STATUS: [PETAL_S0002] Root category Вид (line 3) is imported as the logical view\n"));
    EXPECT_EQ(run("$petal import r.mdl -q --format none").errors, "") << "a status is not a warning";
    EXPECT_FALSE(has(run("$petal import r.mdl -q --format tree --units skip").output, "package"));
}

TEST_F(Units, AreListed) {
    const Ended listed = run("$petal units m.mdl shop/sales.cat --path-map SHOP=shop");
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.output, "m.mdl: 2 controlled units, 1 missing\n"
                             "  Class_Category sales (m.mdl line 5): $SHOP\\Sales.CAT\n"
                             "    found: shop/sales.cat\n"
                             "  Class_Category gone (m.mdl line 6): $SHOP\\gone.cat\n"
                             "    missing: there is no such file\n"
                             "shop/sales.cat: 0 controlled units, 0 missing\n");
    const Ended suggesting = run("$petal units m.mdl --units require");
    EXPECT_EQ(suggesting.status, 4);
    EXPECT_TRUE(has(suggesting.output, "\n--path-map SHOP=shop would find 1 of 2\n"));
    EXPECT_EQ(run("$petal units none shop/sales.cat").status, 5);
    EXPECT_EQ(run("$petal units none").status, 1);
    const std::string lone = run("$petal import shop/sales.cat --format tree").output;
    EXPECT_EQ(lone.find("model sales\n"), 0U) << "a package alone is what it is";
    EXPECT_TRUE(lone.ends_with("\n  package sales\n    class Order\n")) << lone;
}

TEST_F(Units, AreListedForPrograms) {
    std::string other = model;
    other.replace(other.find("sales"), 5, "caf\xE9");
    put("m.mdl", other.replace(other.find("$SHOP\\\\gone"), 5, "$NONE"));
    const std::string compact = " --json | tr -d '\\n' | sed 's/  */ /g'";
    EXPECT_EQ(run("$petal units none m.mdl --path-map auto" + compact).output,
              R"({ "format": "petal-units", "formatVersion": 1, "models": [ { "file": "none",)"
              R"( "error": "cannot read 'none': No such file or directory" }, { "file": "m.mdl", "units": [)"
              R"( { "kind": "Class_Category", "name": "café", "fileName": "$SHOP\\Sales.CAT", "namedIn": "m.mdl",)"
              R"( "line": 5, "state": "found", "path": "shop/sales.cat" }, { "kind": "Class_Category", "name": "gone",)"
              R"( "fileName": "$NONE\\gone.cat", "namedIn": "m.mdl", "line": 6, "state": "missing", "cause":)"
              R"( "symbolUnset", "remark": "nothing says what $NONE stands for" } ] } ], "symbols": [ { "symbol":)"
              R"( "NONE", "units": 1, "missing": 1 }, { "symbol": "SHOP", "units": 1, "missing": 0, "folder": "shop",)"
              R"( "from": "auto" } ], "suggestions": []})");
    EXPECT_TRUE(has(run("SHOP=nowhere $petal units m.mdl" + compact).output,
                    R"( "folder": "nowhere", "from": "environment" } ], "suggestions": [ { "symbol": "SHOP", "folder":)"
                    R"( "shop", "found": 1, "units": 1 } ]})"));
}

/// A folder of models of which units are missing for several causes.
class SeveralModels : public Units {
protected:
    SeveralModels() {
        put("a/1.mdl", model);
        put("a/2.mdl", model);
        put("a/3.mdl", naming("C:\\\\old\\\\x.cat", "bad.cat"));
        put("a/bad.cat", "no model");
        put("a/my code/sales.cat", unit);
    }

    static std::string naming(const std::string& first, const std::string& second) {
        std::string text = model;
        for (const auto& [from, to] :
             {std::pair{"$SHOP\\\\Sales.CAT", first}, std::pair{"$SHOP\\\\gone.cat", second}}) {
            text.replace(text.find(from), std::string_view(from).size(), to);
        }
        return text;
    }
};

TEST_F(SeveralModels, AreToldOfByCause) {
    const std::string told = "petal: $SHOP is not set: 4 units in 2 models\n"
                             "petal: not found under C:\\old: 1 unit in 1 model, such as C:\\old\\x.cat\n"
                             "petal: not a model file: 1 unit in 1 model, such as a/bad.cat\n"
                             "petal: --path-map 'SHOP=a/my code' would find 2 of 4\n";
    struct Row {
        const char* options;
        std::string errors;
        const char* events; // in the log
    };
    const Row rows[] = {{"-q", told, "0\n"},
                        {"-q -j 4 --log -", told, "0\n"},
                        {"-q --log log", "", "6\n"},
                        {"-q --log-level ERROR", "", "0\n"},
                        {"-q --log-format json 2> log", "", "6\n"}};
    for (const Row& row : rows) {
        put("log", "");
        const Ended ended = run("$petal import a --format none --report report " + std::string(row.options));
        EXPECT_EQ(ended.errors, row.errors) << row.options;
        EXPECT_EQ(run("grep -c PETAL_W0001 log").output, row.events) << row.options << get("log");
        EXPECT_TRUE(has(get("report"), "\"unitsMissing\": 6")) << row.options;
    }
    EXPECT_EQ(run("$petal import a --format none --log log").errors.find(told), 0U);
    EXPECT_TRUE(has(run("$petal import a --format none --units require").errors, told));
    const Ended failing = run("$petal import a --format none -q --fail-on warning --report report");
    EXPECT_EQ(failing.status, 3);
    EXPECT_TRUE(has(get("report"), "\"WARNING\": 2"));
}

TEST_F(SeveralModels, AreMappedAsIfByHand) {
    const Ended found = run("$petal import a -o auto --path-map auto -j 2");
    EXPECT_EQ(found.errors.find("petal: --path-map 'SHOP=a/my code' finds 2 of 4\n"
                                "petal: not found under a/my code ($SHOP): 2 units in 2 models"),
              0U)
        << found.errors;
    EXPECT_EQ(run("$petal import a -o hand -q --path-map 'SHOP=a/my code'; diff -r auto hand").output, "");
    EXPECT_EQ(run("$petal import a -o fixed -q --path-map auto --path-map SHOP=none; cmp auto/a/1.mdl.json "
                  "fixed/a/1.mdl.json")
                  .status,
              1);
    // A single file looks at the folders above.
    put("b/model/one.mdl", naming("$Root\\\\shop\\\\sales.cat", "$Root\\\\none.cat"));
    put("b/shop/sales.cat", unit);
    const Ended one = run("cd b/model; $petal import one.mdl --format tree --path-map auto --timeout 60");
    EXPECT_EQ(one.errors.find("petal: --path-map Root=.. finds 1 of 2\nWARNING: [PETAL_W0001] Controlled unit gone"),
              0U)
        << one.errors;
    EXPECT_TRUE(has(one.output, "class Order"));
}

TEST(LossLines, AreTheSameInAnyOrderAndEnd) {
    std::vector<units::ModelLosses> models;
    for (int number = 0; number < 30; ++number) {
        const std::string symbol = "$S" + std::to_string(number);
        models.push_back({.units = {{units::UnitFault::symbolUnset, symbol + "\\a.cat", "f", "", ""},
                                    {units::UnitFault::symbolUnset, "$common\\\x1B.cat", "f", "", ""},
                                    {units::UnitFault::absent, "\\\\server\\a\\b.cat", "f", "", ""},
                                    {units::UnitFault::absent, "near" + symbol + ".cat", "f", "", ""},
                                    {units::UnitFault::cycle, "x.cat", "f", "p" + symbol + "\x1B", ""},
                                    {units::UnitFault::unreadable, "x.cat", "f", "p", "it cannot be read: why"}},
                          .untold = 1,
                          .provenSymbols = {}});
        models.back().units.resize(number % 10 == 0 ? 6 : 2);
    }
    models[7].units[1].fileName = "$COMMON/b.cat";
    units::LostUnits there;
    std::ranges::for_each(models, [&](const units::ModelLosses& model) { there.add(model); });
    units::LostUnits back;
    std::ranges::for_each(models.rbegin(), models.rend(), [&](const units::ModelLosses& model) { back.add(model); });
    const petal::TextLines lines = petal::lossLines(there);
    EXPECT_EQ(lines, petal::lossLines(back));
    const petal::TextLines first{"not listed: 30 units in 30 models",
                                 "$COMMON is not set: 30 units in 30 models",
                                 "not found beside the file that names it: 3 units in 3 models, such as near$S0.cat",
                                 "not found under \\\\server: 3 units in 3 models, such as \\\\server\\a\\b.cat",
                                 "cannot be read (why): 3 units in 3 models, such as p",
                                 "contains itself: 3 units in 3 models, such as p$S0\\x1b",
                                 "$S0 is not set: 1 unit in 1 model"};
    ASSERT_EQ(lines.size(), 21U);
    EXPECT_TRUE(std::ranges::equal(first, std::span(lines).first(first.size()))) << testing::PrintToString(lines);
    EXPECT_EQ(lines.back(), "... and 16 more causes");
}

} // namespace
