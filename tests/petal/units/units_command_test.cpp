#include "petal/Shell.h"

#include <regex>

namespace {

constexpr const char* model = R"((object Petal
    version 42
    charSet 0)
(object Design "Logical View"
    root_category (object Class_Category "Logical View"
	logical_models (list unit_reference_list
	    (object Class_Category "sales"
		is_unit TRUE
		is_loaded FALSE
		file_name "$SHOP\\Sales.CAT")
	    (object Class_Category "gone"
		is_unit TRUE
		is_loaded FALSE
		file_name "$SHOP\\gone.cat")
	    (object Class_Category "after"
		logical_presentations 	(list unit_reference_list)))
	logical_presentations 	(list unit_reference_list)))
)";

constexpr const char* unit = R"((object Petal
    version 42
    charSet 0)
(object Class_Category "sales"
    logical_models (list unit_reference_list
	(object Class "Order"))
    logical_presentations 	(list unit_reference_list))
)";

std::string replaced(const std::string& text, const char* pattern, const std::string& by) {
    return std::regex_replace(text, std::regex(pattern), by);
}

class Units : public Shell {
protected:
    Units() : Shell("") {
        put("m.mdl", model);
        std::filesystem::create_directory(folder / "shop");
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
    EXPECT_EQ(whole.errors, "WARNING: [PETAL_W0001] Controlled unit gone (line 11) is not read: there is no such file: "
                            "$SHOP\\gone.cat\n");
    const char* sameByOtherMeans[]{"SHOP=shop $petal import m.mdl --format tree",
                                   "$petal import --unit-dir . m.mdl --format tree"};
    for (const char* command : sameByOtherMeans) {
        EXPECT_EQ(run(command).output, whole.output) << command;
    }
    EXPECT_EQ(run("$petal import m.mdl -q --units skip --format tree").errors, "");
    EXPECT_EQ(run("TMPDIR=/missing $petal import m.mdl --path-map SHOP=shop").status, 6);
    EXPECT_EQ(files(), (std::set<std::string>{"m.mdl", "shop"}));
}

TEST_F(Units, MayBeRequired) {
    const Ended refused = run("$petal import m.mdl --units require --path-map SHOP=shop");
    EXPECT_EQ(refused.status, 4);
    EXPECT_EQ(refused.output, "");
    put("shop/gone.cat", "(object Petal version 42)(object Class_Category \"gone\")");
    EXPECT_EQ(run("$petal import m.mdl --units require --path-map SHOP=shop").status, 0);
    EXPECT_EQ(run("$petal import m.mdl --path-map SHOP").status, 2);
}

TEST_F(Units, AreNotOverwritten) {
    std::filesystem::create_symlink("shop/sales.cat", pathOf("link"));
    for (const char* option : {"-o", "--log", "--ledger", "--report"}) {
        for (const char* more : {"", " --in-process", " --timeout 60"}) {
            const Ended ended = run("SHOP=shop $petal import m.mdl -q " + std::string(option) + " link" + more);
            EXPECT_EQ(ended.status, 2) << option << more;
            EXPECT_EQ(ended.errors.find("petal: writing 'link' would overwrite 'shop/sales.cat'\n"), 0U)
                << ended.errors;
            EXPECT_EQ(get("shop/sales.cat"), unit) << option << more;
        }
    }
    EXPECT_EQ(files(), (std::set<std::string>{"m.mdl", "shop", "link"}));
}

TEST_F(Units, MayNotKeepPetalWaiting) {
    const std::string pattern = "$SHOP\\\\Sales.CAT";
    for (const char* name : {"pipe", "/dev/zero", "link"}) {
        std::string hostile = model;
        put("hostile.mdl", hostile.replace(hostile.find(pattern), pattern.size(), name));
        const Ended ended =
            run("mkfifo pipe; ln -sf /dev/zero link; timeout 20 $petal import hostile.mdl -q; echo $? >&2; "
                "timeout 20 $petal units hostile.mdl");
        EXPECT_NE(ended.errors.find("\n0\n"), std::string::npos) << ended.errors;
        EXPECT_NE(ended.output.find(name + std::string("\n    missing: there is no such file\n")), std::string::npos)
            << ended.output;
    }
}

TEST_F(Units, ALonePackageIsWhatItIs) {
    const Ended lone = run("$petal import shop/sales.cat --format tree");
    EXPECT_EQ(lone.output.substr(lone.output.find("  package")), "  package sales\n    class Order\n");
    EXPECT_EQ(lone.output.substr(0, lone.output.find('\n')), "model sales");
}

TEST_F(Units, TheRootMayHaveAnotherName) {
    const std::string renamed = R"((object Petal
    version 42
    charSet 204)
(object Design "Logical View"
    root_category (object Class_Category "Вид"
	logical_models (list unit_reference_list
	    (object Class "Base")
	    (object Class "Derived"
		superclasses (list inheritance_relationship_list
		    (object Inheritance_Relationship
			supplier "Вид::Base")))%)
	logical_presentations (list unit_reference_list
	    (object ClassDiagram "Main"
		items (list diagram_item_list
		    (object ClassView "Class" "Вид::Base" @1)))))))
)";
    const std::string unit =
        R"((object Class_Category "sales" is_unit TRUE is_loaded FALSE file_name "shop/sales.cat"))";
    const std::string tree = "  package Вид\n"
                             "%"
                             "    class Base\n"
                             "    class Derived\n"
                             "    generalization: Derived -> Base\n"
                             "    diagram Main\n"
                             "      shows class Base\n";
    const std::pair<std::string, std::string> cases[] = {{"", ""}, {unit, "    package sales\n      class Order\n"}};
    for (const auto& [inFile, inTree] : cases) {
        put("r.mdl", replaced(replaced(renamed, "Вид", "\xC2\xE8\xE4"), "%", inFile));
        const Ended ended = run("$petal import r.mdl -q --format tree --log-level STATUS");
        EXPECT_EQ(ended.output.substr(ended.output.find("  package")), replaced(tree, "%", inTree));
        EXPECT_EQ(ended.errors.substr(0, ended.errors.find('\n')),
                  "STATUS: [PETAL_S0002] Root category Вид (line 5) is imported as the logical view");
        EXPECT_EQ(run("$petal import r.mdl -q --format none").errors, "");
        EXPECT_EQ(run("$petal import r.mdl -q --format tree --units skip").output.find("package"), std::string::npos);
    }
}

TEST_F(Units, AreListed) {
    const Ended listed = run("$petal units m.mdl shop/sales.cat --path-map SHOP=shop");
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.output, "m.mdl: 2 controlled units, 1 of them missing\n"
                             "  Class_Category sales (m.mdl line 7): $SHOP\\Sales.CAT\n"
                             "    found: shop/sales.cat\n"
                             "  Class_Category gone (m.mdl line 11): $SHOP\\gone.cat\n"
                             "    missing: there is no such file\n"
                             "shop/sales.cat: 0 controlled units, 0 of them missing\n");
    EXPECT_EQ(run("$petal units m.mdl --units require").status, 4);
    EXPECT_EQ(run("$petal units none shop/sales.cat").status, 5);
    EXPECT_EQ(run("$petal units none").status, 1);
}

} // namespace
