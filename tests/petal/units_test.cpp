#include "Shell.h"

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
    EXPECT_EQ(run("TMPDIR=/missing $petal import m.mdl --path-map SHOP=shop").status, 6);
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
		superclasses (list inheritance_relationship_list
		    (object Inheritance_Relationship
			supplier "%::Base")))
	    (object Class_Category "sales" is_unit TRUE is_loaded FALSE file_name "shop/sales.cat"))
	logical_presentations (list unit_reference_list
	    (object ClassDiagram "Main"
		items (list diagram_item_list
		    (object ClassView "Class" "%::Base" @1)))))))
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
    EXPECT_EQ(listed.output, "m.mdl: 2 controlled units, 1 of them missing\n"
                             "  Class_Category sales (m.mdl line 5): $SHOP\\Sales.CAT\n"
                             "    found: shop/sales.cat\n"
                             "  Class_Category gone (m.mdl line 6): $SHOP\\gone.cat\n"
                             "    missing: there is no such file\n"
                             "shop/sales.cat: 0 controlled units, 0 of them missing\n");
    EXPECT_EQ(run("$petal units m.mdl --units require").status, 4);
    EXPECT_EQ(run("$petal units none shop/sales.cat").status, 5);
    EXPECT_EQ(run("$petal units none").status, 1);
    const std::string lone = run("$petal import shop/sales.cat --format tree").output;
    EXPECT_EQ(lone.find("model sales\n"), 0U) << "a package alone is what it is";
    EXPECT_TRUE(lone.ends_with("\n  package sales\n    class Order\n")) << lone;
}

} // namespace
