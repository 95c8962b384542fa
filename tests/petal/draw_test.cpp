#include "Shell.h"
#include "support/keepDocument.h"
#include "support/skipWithout.h"

#include <cstdlib>

namespace {

constexpr const char* model = R"((object Petal version 42 charSet 0)
(object Design "Logical View"
    root_category (object Class_Category "Logical View"
	logical_models (list unit_reference_list
	    (object Class_Category "a/b" is_unit TRUE is_loaded FALSE file_name "b.cat")
	    (object Class "C" quid "4A0000000001"))
	logical_presentations (list unit_reference_list
	    (object ClassDiagram "Main" quid "4D0000000001" items (list diagram_item_list
		(object ClassView "Class" "Logical View::C" @1 location (0, 0) quidu "4A0000000001" line_color 255
		    fill_color 65280)
		(object HologramView "x" @2)))
	    (object ClassDiagram "main" items (list diagram_item_list))
	    (object ClassDiagram "" items (list diagram_item_list))
	    (object ClassDiagram "..:?" items (list diagram_item_list)))))
)";
constexpr const char* unit = R"((object Petal version 42 charSet 0)
(object Class_Category "a/b"
    logical_presentations (list unit_reference_list
	(object ClassDiagram "In" items (list diagram_item_list
	    (object ClassView "Class" "Logical View::C" @1 quidu "4A0000000001")))))
)";

class Draw : public Shell {
protected:
    Draw() {
        put("m.mdl", model);
        put("b.cat", unit);
    }
};

TEST_F(Draw, WritesAPictureForEachDiagramBelowItsPackages) {
    const Ended all = run("$petal draw m.mdl -o out");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.errors, "petal: m.mdl: views of unknown kinds, drawn as boxes or lines: 1 HologramView\n");
    EXPECT_EQ(files("out"), (Names{"Logical View/Main.svg", "Logical View/main (2).svg", "Logical View/_.svg",
                                   "Logical View/____.svg", "Logical View/a_b/In.svg"}));
    const std::string main = get("out/Logical View/Main.svg");
    EXPECT_TRUE(has(main, "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\""));
    EXPECT_TRUE(has(main, "data-view=\"ClassDiagram\" data-quid=\"4D0000000001\" data-line=\"8\""));
    EXPECT_TRUE(has(main, "<g data-view=\"ClassView\" data-quid=\"4A0000000001\" data-ref=\"1\" data-line=\"9\" "
                          "stroke=\"#ff0000\" fill=\"#00ff00\"><title>Logical View::C</title>"
                          "<rect x=\"-110\" y=\"-55\" width=\"220\" height=\"110\"/>"));
    EXPECT_TRUE(has(get("out/Logical View/a_b/In.svg"), "data-file=\"b.cat\""));

    EXPECT_EQ(run("$petal draw m.mdl -q -o ./new//deep/").status, 0);
    EXPECT_EQ(files("new/deep"), files("out"));
    EXPECT_EQ(get("new/deep/Logical View/Main.svg"), main);

    EXPECT_EQ(run("$petal draw m.mdl -q --diagram 'Logical View::Main' -o one.svg").errors, "");
    EXPECT_EQ(get("one.svg"), main);
    EXPECT_EQ(run("cd / && $petal draw \"$OLDPWD/m.mdl\" -q --diagram Main").output, main);
    EXPECT_TRUE(
        has(run("$petal draw m.mdl -q --diagram Main -O theme=plain").output, "stroke=\"#000000\" fill=\"#ffffff\""));
}

TEST_F(Draw, TellsDamages) {
    put("m.mdl", std::string(model).substr(0, std::string(model).find("(object ClassDiagram \"main\"")));
    EXPECT_TRUE(has(run("$petal draw m.mdl -o out").errors, "petal: m.mdl: damages: 1; line 12, column "));
    EXPECT_EQ(run("$petal draw m.mdl -o out -q").errors, "");
    EXPECT_TRUE(has(get("out/Logical View/Main.svg"), "Logical View::C"));
}

/// A model is read as if it had no units, until one shows. A listing of its units reads it in another way.
TEST_F(Draw, MissesUnitsWhereverAModelRefersToThem) {
    const auto missing = [&](const std::string& object) {
        put("m.mdl", R"((object Petal version 42 charSet 0)
(object Design "Logical View" root_category (object Class_Category "Logical View" logical_models (list l
)" + object + R"() logical_presentations (list l (object ClassDiagram "Main" items (list diagram_item_list)))))
)");
        const Ended drawn = run("$petal draw m.mdl -o out");
        EXPECT_EQ(drawn.status, 0);
        EXPECT_TRUE(has(get("out/Logical View/Main.svg"), "Logical View::Main"));
        const bool isListed = has(run("$petal units m.mdl").output, "gone.cat");
        EXPECT_EQ(has(drawn.errors, "gone.cat"), isListed) << object << drawn.errors;
        return isListed;
    };
    const std::string start = "(object Class_Category \"U\"\n is_unit TRUE\n";
    const std::string file = "\n file_name \"gone.cat\")\n";
    EXPECT_TRUE(missing(start + " is_loaded FALSE" + file));
    EXPECT_FALSE(missing(start + " is_loaded\n\tFALSE" + file)); // a value is on the line of its key
    EXPECT_TRUE(
        missing("(object Class \"C\" attributes (list Attribute_Set\n" + start + " is_loaded FALSE" + file + "))\n"));
    EXPECT_TRUE(missing(start + " label \"never ends\n is_loaded FALSE" + file));
    EXPECT_FALSE(missing(start + " is_loaded TRUE" + file));
    EXPECT_FALSE(missing(start + " is_loaded \"FALSE\"" + file));
    EXPECT_FALSE(missing("(object Class \"C\" documentation \"is_unit TRUE is_loaded FALSE\")\n"));
}

TEST_F(Draw, ListsDiagrams) {
    EXPECT_EQ(run("$petal draw --list m.mdl").output, "ClassDiagram\tLogical View::a/b::In\t1\n"
                                                      "ClassDiagram\tLogical View::Main\t2\n"
                                                      "ClassDiagram\tLogical View::main\t0\n"
                                                      "ClassDiagram\tLogical View::\t0\n"
                                                      "ClassDiagram\tLogical View::..:?\t0\n");
    const std::string list = run("$petal draw --list --json m.mdl --diagram In").output;
    EXPECT_EQ(list, "[\n  {\n    \"model\": \"m.mdl\",\n    \"kind\": \"ClassDiagram\",\n"
                    "    \"name\": \"Logical View::a/b::In\",\n    \"items\": 1,\n    \"file\": \"b.cat\",\n"
                    "    \"line\": 4,\n    \"picture\": \"Logical View/a_b/In.svg\"\n  }\n]\n");
    keepDocument(list);
}

TEST_F(Draw, RefusesWhatCannotBe) {
    put("none.mdl", "(object Petal version 42)\n(object Design \"d\")\n");
    expectRefusals("$petal draw ", {
                                       {"m.mdl --diagram other -o out", 1, "'m.mdl' has no diagram named 'other'"},
                                       {"m.mdl -q", 2, "'m.mdl' has 5 diagrams to draw, and a file holds one"},
                                       {"m.mdl -O theme=dark -o out", 2, "theme"},
                                       {"m.mdl m.mdl b.cat", 2, "need a folder"},
                                       {"m.mdl b.cat --as drawio -o x.drawio", 2, "'x.drawio' is the name of one file"},
                                       {"gone.mdl -o out", 1, "cannot read 'gone.mdl'"},
                                       {"m.mdl -q --as drawio -o b.cat", 2, "would overwrite"},
                                       {"m.mdl --json -o out", 2, "--list"},
                                       {"m.mdl -o x.drawio", 2, "'x.drawio' is the name of a file for draw.io"},
                                       {"m.mdl --as drawio -o x.svg", 2, "'x.svg' is the name of a file for a picture"},
                                       {"none.mdl", 1, "'none.mdl' has no diagrams"},
                                   });
    std::filesystem::remove(pathOf("b.cat"));
    EXPECT_EQ(run("$petal draw m.mdl --units require --list").status, 4);
    EXPECT_TRUE(has(run("$petal draw m.mdl --list").errors, "b.cat"));
    EXPECT_EQ(run("$petal draw m.mdl --units skip --list").errors, "");
}

TEST_F(Draw, GoesThroughFolders) {
    put("models/sub/n.mdl", unit);
    put("models/bad.mdl", "no model");
    put("models/m.mdl", model);
    const Ended ended = run("$petal draw models -o out -j 2 -q --unit-dir .");
    EXPECT_EQ(ended.status, 5);
    EXPECT_TRUE(has(ended.errors, "'models/bad.mdl' is not a model file"));
    EXPECT_TRUE(has(ended.errors, "1 of 3 files failed"));
    const Names drawn = files("out");
    EXPECT_EQ(drawn.size(), 6U);
    EXPECT_EQ(drawn.count("models/sub/n.mdl/a_b/In.svg") + drawn.count("models/m.mdl/Logical View/Main.svg"), 2U);
    const Ended list = run("$petal draw models --list --diagram Main -q --unit-dir .");
    EXPECT_EQ(list.output, "ClassDiagram\tLogical View::Main\t2\tmodels/m.mdl\n") << "a model that fails costs others";
    EXPECT_EQ(list.status, 5);
    EXPECT_EQ(run("$petal draw models/sub models/m.mdl --diagram In -o in -q --unit-dir .").status, 0);
    EXPECT_EQ(run("$petal draw models/sub models/m.mdl --diagram Main -o in -q --unit-dir .").status, 0);
    EXPECT_EQ(run("$petal draw models/sub models/m.mdl --diagram X -o in -q --unit-dir .").status, 1);
    EXPECT_EQ(run("$petal draw models/sub models/m.mdl --as drawio -o io -q --unit-dir .").status, 0);
    EXPECT_EQ(run("$petal draw models/m.mdl b.cat --list").errors,
              "petal: models/m.mdl: missing controlled units: 1\n");
    EXPECT_EQ(files("io"), (Names{"models/m.mdl.drawio", "models/sub/n.mdl.drawio"}));
    EXPECT_TRUE(has(get("io/models/m.mdl.drawio"), "<diagram id=\"d1\" name=\"Main\">"));
}

/// Those in the documentation are drawn anew when drawing changes, and looked at.
TEST_F(Draw, HasTheDocumentedPictures) {
    const std::pair<const char*, const char*> pictures[]{
        {"Care", "care"}, {"An appointment is made", "appointment"}, {"A visit", "visit"}};
    for (const auto& [diagram, name] : pictures) {
        const std::string kept = std::string(PETAL_SOURCES "/docs/pictures/") + name + ".svg";
        const std::string draw = std::string("$petal draw '" PETAL_EXAMPLES "/clinic.mdl' --diagram '") + diagram + "'";
        EXPECT_EQ(run(draw + " | cmp - '" + kept + "'").status, 0) << draw << " -o " << kept;
    }
}

/// All pictures of the examples, and of the real models that there may be, are read by the programs that show them.
TEST_F(Draw, MakesPicturesThatOthersShow) {
    for (const char* program : {"xmllint", "rsvg-convert"}) {
        if (run(std::string("command -v ") + program).status != 0) {
            return rose::test::skipWithout(std::string(program) + " is not installed");
        }
    }
    const std::string models =
        std::string("'" PETAL_EXAMPLES "' ") + (*PETAL_REAL_MODELS != '\0' ? "'" PETAL_REAL_MODELS "'" : "");
    ASSERT_EQ(run("$petal draw -q -j 2 -o out " + models).status, 0);
    ASSERT_EQ(run("$petal draw -q -j 2 --as drawio -o io " + models).status, 0);
    EXPECT_GE(files("out").size(), 14U);
    EXPECT_EQ(run("find out io -type f -print0 | xargs -0 xmllint --noout --nonet").errors, "");
    EXPECT_EQ(run("find out -name '*.svg' -print0 | xargs -0 -n 1 rsvg-convert -w 200 -o picture.png").errors, "");
}

} // namespace
