#include "layout/makeScene.h"
#include "layout/markup.h"
#include "layout/metrics.h"
#include "layout/write.h"
#include "support/HostileTexts.h"
#include "support/InFolder.h"
#include "units/UnitLocator.h"

#include <ctime>

namespace {

using namespace layout;

/// Text that an output collects.
class TextOutput final : public text::Output {
public:
    void write(std::string_view bytes) override { text.append(bytes); }
    std::string text;
};

class Drawn : public InFolder {
protected:
    /// The scenes of a model, one after the other.
    [[nodiscard]] std::vector<Scene> scenesOf(const std::string& model) const {
        put("m.mdl", model);
        units::UnitLocator locator(units::PathSymbols{}, {});
        const units::UnitTree files = units::readUnitTree(pathOf("m.mdl"), locator);
        const NotationTree& tree = *trees_.emplace_back(std::make_unique<NotationTree>(files));
        const Elements elements(tree);
        std::vector<Scene> scenes;
        for (const NodeId diagram : diagramsOf(tree)) {
            scenes.push_back(makeScene(tree, elements, diagram));
        }
        return scenes;
    }
    /// The only scene of a model with these elements and views.
    [[nodiscard]] Scene sceneOf(const std::string& elements, const std::string& views) const {
        return scenesOf(R"((object Petal version 42 charSet 0)
(object Design "Logical View" root_category (object Class_Category "Logical View" logical_models (list l
)" + elements + R"()
logical_presentations (list l (object ClassDiagram "Main" quid "4D0000000001" items (list diagram_item_list
)" + views + ")))))\n")
            .at(0);
    }

private:
    mutable std::vector<std::unique_ptr<NotationTree>> trees_; // scenes refer to their texts
};

std::string numbers(const Rectangle& box) {
    return decimal(box.x) + "," + decimal(box.y) + " " + decimal(box.width) + "x" + decimal(box.height);
}

/// A line for each item: kind, what is drawn, and where.
std::string described(const Scene& scene) {
    std::string lines;
    for (const Item& item : scene.items) {
        lines += (item.parent == noItem ? "" : "  ") + std::string(item.kind) + " @" + item.reference;
        lines += item.hasBox ? " shape " + std::to_string(static_cast<int>(item.shape)) + " " + numbers(item.box) : "";
        lines += item.isMissing ? " missing" : "";
        for (const Point& point : item.route) {
            lines += " " + decimal(point.x) + "," + decimal(point.y);
        }
        lines += item.route.empty() ? "" : " mark " + std::to_string(static_cast<int>(item.endMark));
        lines += item.isDashed ? " dashed" : "";
        for (const Text& text : item.texts) {
            lines += " '" + text.text + "'";
        }
        lines += "\n";
    }
    return lines;
}

TEST_F(Drawn, HasBoxesMembersAndLinesWhereTheFileSays) {
    const Scene scene = sceneOf(
        R"((object Class "A" quid "4A00000000aa" abstract TRUE
  class_attributes (list class_attribute_list
    (object ClassAttribute "a" type "Logical View::B" initv "0" stereotype "id" exportControl "Public")
    (object ClassAttribute "b" static TRUE derived TRUE))
  operations (list Operations
    (object Operation "f" parameters (list Parameters (object Parameter "x" type "int")) result "B")))
(object Class_Category "P" logical_models (list l (object Class "B")))
(object Association "r" quid "4A0000000003" roles (list role_list
  (object Role "whole" supplier "Logical View::A" is_aggregate TRUE is_navigable TRUE)
  (object Role "part" Containment "By Value" is_navigable TRUE client_cardinality (value cardinality "0..n")))))",
        R"((object ClassView "Class" "Logical View::A" @1 ShowCompartmentStereotypes TRUE IncludeAttribute TRUE
  IncludeOperation TRUE ShowOperationSignature TRUE location (200, 200) line_color 255 fill_color 16711680
  quidu "4A00000000AA" width 300 height 300)
(object ClassView "Class" "Logical View::P::B" @2 SuppressAttribute TRUE location (800, 200) width 101 height 51
  label (object ItemLabel label "B" location (760, 180)))
(object ClassView "Class" "Logical View::P::C" @3 location (200, 800) quidu "4AFFFFFFFFFF" width 100 height 100)
(object InheritView "" @4 client @2 supplier @1 line_color 0 vertices (list Points (749, 200) (500, 100) (360, 100)))
(object UsesView "" @5 client @3 supplier @1)
(object AssociationViewNew "r" @6 location (500, 300) quidu "4A0000000003" line_color 0 roleview_list (list RoleViews
  (object RoleView "whole" @7 Parent_View @6 client @6 supplier @1)
  (object RoleView "part" @8 Parent_View @6 client @6 supplier @2
    label (object SegLabel location (700, 260) anchor_loc 1 label "+part")
    label (object SegLabel location (700, 300) anchor_loc 1 hidden TRUE label "hidden")))))");
    EXPECT_EQ(described(scene),
              "ClassView @1 shape 2 50,50 300x300 'A' '<<id>> + a : B = 0' '- /b' '+ f(x : int) : B'\n"
              "ClassView @2 shape 2 749.5,174.5 101x51 'B'\n"
              "ClassView @3 shape 2 150,750 100x100 missing dashed 'C'\n"
              "InheritView @4 749,200 500,100 360,100 350,100 mark 3\n"
              "UsesView @5 200,750 200,350 mark 1 dashed\n"
              "AssociationViewNew @6\n"
              "  RoleView @7 500,300 350,250 mark 5 '+whole'\n"
              "  RoleView @8 500,300 749.5,216.83 mark 0 '+part'\n");
    const Item& item = scene.items[0];
    EXPECT_EQ(colourText(item.lineColour) + colourText(item.fillColour), "#ff0000#0000ff");
    EXPECT_TRUE(item.texts[0].font.isItalic && item.texts[2].font.isUnderlined);
    EXPECT_EQ(item.texts[0].font.size, 40.625); // ten points are thirteen pixels of 1/96 inch
    EXPECT_EQ(scene.items[3].title, "InheritView: B - A");
    EXPECT_EQ(scene.items[6].title, "whole");
}

TEST_F(Drawn, HasTheThreeKindsThatAreNotPlacedByTheirMiddle) {
    const Scene scene = sceneOf(R"((object Message "go" quid "4E0000000001" synchronization "Return"))",
                                R"((object InterObjView "o" @1 location (300, 200) width 200 height 900
  Focus_Of_Control (object Focus_Of_Control "" @2 location (300, 400) height 100)
  Focus_Of_Control (object Focus_Of_Control "" @3 location (300, 440) height 80 Nested TRUE)
  Focus_Of_Control (object Focus_Of_Control "" @8 location (300, 420) height 1 Nested TRUE))
(object InterObjView "p" @4 location (900, 200) width 200 height 900 icon "Actor" icon_style "Icon")
(object InterMessView "go" @5 location (300, 450) client @1 supplier @4 origin (316, 450) terminus (900, 450)
  label (object SegLabel quidu "4E0000000001" location (600, 410) anchor_loc 1 label "go"))
(object SelfMessView "self" @6 location (300, 500) client @1 supplier @1 line_color 0)
(object Swimlane "lane" @7 width 500))");
    EXPECT_EQ(described(scene), "InterObjView @1 shape 20 200,140 200x900 'o'\n"
                                "InterObjView @4 shape 20 800,140 200x900 'p'\n"
                                "InterMessView @5 332,450 900,450 mark 1 dashed 'go'\n"
                                "SelfMessView @6 332,500 400,500 400,540 300,540 mark 1\n"
                                "Swimlane @7 shape 21 0,0 500x1140 'lane'\n");
    ASSERT_EQ(scene.items[0].bars.size(), 2U); // of one unit is none
    EXPECT_EQ(numbers(scene.items[0].bars[0]), "284,400 32x100");
}

TEST_F(Drawn, EndsLinesAtSignsThatDoNotFillTheirBox) {
    const Scene scene = sceneOf("", R"((object ModView "" "a" @1 location (200, 300) width 200 height 200)
(object ModView "" "b" @2 location (1000, 300) width 400 height 200)
(object ModVisView "" @3 client @1 supplier @2)
(object ModVisView "" @4 client @1 supplier @2 vertices (list Points (300, 258) (800, 258)))
(object StateView "EndState" "e" @5 location (600, 900))
(object TransView "" @6 client @1 supplier @5 vertices (list Points (200, 400) (200, 900) (558, 900))))");
    EXPECT_EQ(described(scene), "ModView @1 shape 12 100,200 200x200 'a'\n"
                                "ModView @2 shape 12 800,200 400x200 'b'\n"
                                "ModVisView @3 300,300 830,300 mark 1 dashed\n" // between the lugs
                                "ModVisView @4 300,258 800,258 mark 1 dashed\n" // at one of them
                                "StateView @5 shape 17 558,858 84x84 'e'\n"
                                "TransView @6 200,400 200,900 558,900 mark 1\n");
}

TEST_F(Drawn, IsInTheOrderOfObjectsWhereverTheirPropertiesAre) {
    const std::vector<Scene> scenes = scenesOf(R"((object Petal version 42 charSet 0)
(object Design "Logical View" root_category (object Class_Category "Outer" logical_models (list l
(object Class_Category "Inner" logical_models (list l (object Class "X" quid "4F0000000001"))
items (list diagram_item_list (object NoteView @1))))
quid "4f0000000001" items (list diagram_item_list
(object CategoryView "Outer" @2 quidu "4F0000000001" label (value Text "a") line_color (7, 8)))))
)");
    ASSERT_EQ(scenes.size(), 2U);
    EXPECT_EQ(scenes[0].name, "Outer");
    EXPECT_EQ(scenes[1].name, "Inner");
    const Item& item = scenes[0].items.at(0);
    EXPECT_FALSE(item.isMissing);
    EXPECT_EQ(item.texts.at(0).text, "a");
    EXPECT_EQ(item.lineColour, 0x070000);
}

/// Numbers that are rounded by multiplying, and those close to the middle, which are not.
TEST(Decimal, IsTheNearestOfTheExactValue) {
    std::string texts;
    for (const double number : {0.125, 0.375, 1.005, -0.004, -0.006, 2.5, 99.995, 1e12 / 3, -1234.5678, 0.1 + 0.2}) {
        texts += decimal(number) + " " + decimal(number, 4) + "\n";
    }
    EXPECT_EQ(texts, "0.12 0.125\n0.38 0.375\n1 1.005\n0 -0.004\n-0.01 -0.006\n2.5 2.5\n100 99.995\n"
                     "333333333333.33 333333333333.3333\n-1234.57 -1234.5678\n0.3 0.3\n");
}

TEST_F(Drawn, FindsElementsInUnitsAndTellsTheirFile) {
    put("sub/unit.cat", R"((object Petal version 42 charSet 0)
(object Class_Category "U" logical_models (list l (object Class "X" quid "4F0000000001" abstract TRUE))
logical_presentations (list l
(object ClassDiagram "Inner" items (list diagram_item_list
(object ClassView "Class" "Logical View::U::X" @1 quidu "4F0000000001")))))
)");
    const std::vector<Scene> scenes = scenesOf(R"((object Petal version 42 charSet 0)
(object Design "Logical View" root_category (object Class_Category "Logical View" logical_models (list l
(object Class_Category "U" is_unit TRUE is_loaded FALSE file_name "sub\\unit.cat"))
logical_presentations (list l (object ClassDiagram "Outer" items (list diagram_item_list
(object ClassView "Class" "Logical View::U::X" @1 location (0, 0))
(object ClassView "Class" "Logical View::U::X" @1 location (0, 0) quidu "4f0000000001"))))))
)");
    ASSERT_EQ(scenes.size(), 2U);
    EXPECT_EQ(scenes[0].packages, (std::vector<std::string>{"Logical View", "U"}));
    EXPECT_EQ(scenes[0].file, "sub/unit.cat");
    EXPECT_EQ(scenes[0].items[0].file, "sub/unit.cat");
    EXPECT_EQ(scenes[0].items[0].line, 5U);
    for (const Item& item : scenes[1].items) {
        EXPECT_TRUE(!item.isMissing && item.file.empty() && item.texts[0].font.isItalic);
    }
}

TEST_F(Drawn, PutsTextsWhereLabelsAreAndMakesThemFit) {
    const std::string element = R"((object Class "A" quid "4A0000000001" class_attributes (list class_attribute_list
(object ClassAttribute "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW") (object ClassAttribute "b"))))";
    const Scene scene =
        sceneOf(element, R"((object UseCaseView "U" @1 location (500, 500) height 118 label (object ItemLabel
  location (500, 638) anchor_loc 1 nlines 2 max_width 200 label "one two three"))
(object StateView "Normal" "S" @2 location (900, 500) width 300 height 200 label (object SegLabel
  location (760, 410) justify 1 max_width 280 label "left"))
(object NoteView @3 location (500, 1000) width 200 height 60 label (object ItemLabel justify 1 label
|a text that is far too long for so small a note
))
(object ClassView "Class" "A" @4 IncludeAttribute TRUE location (900, 1000) width 200 height 130
  quidu "4A0000000001")
(object ActivityStateView "wide" @5 location (0, 0) label (object ItemLabel label "a name that needs a wider box than others")))");
    const auto& oval = scene.items[0].texts;
    ASSERT_EQ(oval.size(), 2U); // lines are 50 units high, the block is round the place
    EXPECT_EQ(oval[0].text + "|" + oval[1].text, "one two|three");
    EXPECT_NEAR(oval[1].at.y - oval[0].at.y, 50, 0.01);
    EXPECT_NEAR((oval[0].room().y + oval[1].room().bottom()) / 2, 638, 5);
    EXPECT_TRUE(oval[0].at.x == 500 && oval[0].anchor == Anchor::middle);
    const Text& state = scene.items[1].texts.at(0);
    EXPECT_TRUE(state.at.x == 760 && state.anchor == Anchor::start && state.at.y > 410 && state.at.y < 460);
    for (const std::size_t index : {2U, 3U}) {
        const Item& item = scene.items[index];
        EXPECT_GT(item.texts.size(), 1U);
        for (const Text& text : item.texts) {
            EXPECT_LT(text.font.size, text.text == "A" ? 41 : 40) << text.text;
            EXPECT_TRUE(item.box.contains(text.room().centre(), 5)) << text.text;
        }
    }
    const std::vector<Text>& members = scene.items[3].texts;
    EXPECT_EQ(members[1].font.size, members[2].font.size); // one size in a class
    EXPECT_GT(scene.items[4].box.width, scene.items[4].texts.at(0).width);
}

TEST_F(Drawn, IsTheSameForDrawio) {
    const Scene scene = sceneOf(R"((object Association "r" quid "4A0000000003" roles (list role_list
  (object Role "x" is_aggregate TRUE) (object Role "y"))))",
                                R"((object ClassView "Class" "A" @1 location (150, 150) width 300 height 300)
(object ClassView "Class" "B" @2 location (1200, 150) width 300 height 300)
(object AssociationViewNew "r" @3 location (600, 150) quidu "4A0000000003" line_color 0 label (object SegLabel
  location (600, 120) anchor_loc 1 label "r") roleview_list (list RoleViews
  (object RoleView "x" @4 client @3 supplier @1) (object RoleView "y" @5 client @3 supplier @2)))
(object AttachView "" @6 client @1 supplier @3 line_color 0 vertices (list Points (150, 600) (600, 600)))
(object InheritTreeView "" @7 location (700, 500) supplier @2 vertices (list Points (700, 500) (1200, 500) (1200, 300)))
(object InheritView "" @8 client @1 supplier @2 line_color 0 line_style 3 origin_attachment (200, 300)
  terminal_attachment (200, 500) drawSupplier @7))");
    TextOutput output;
    text::BufferedOutput buffered(output);
    DrawioWriter writer(Theme::file, buffered);
    writer.write(scene);
    writer.write(Scene{});
    writer.end();
    buffered.flush();
    const auto cell = [&](const std::string& id) {
        const std::size_t at = output.text.find(R"(<mxCell id=")" + id + '"');
        return at == std::string::npos ? "" : output.text.substr(at, output.text.find("</mxCell>", at) - at);
    };
    EXPECT_NE(cell("v0").find(R"(vertex="1"><mxGeometry x="0" y="0" width="100" height="100" as="geometry"/>)"),
              std::string::npos);
    const std::string association = cell("v2"); // both roles in one
    EXPECT_NE(association.find(R"(edge="1" source="v0" target="v1">)"), std::string::npos) << association;
    EXPECT_NE(association.find(R"(<mxPoint x="100" y="50" as="sourcePoint"/><mxPoint x="350" y="50" as="targetPoint"/>)"
                               R"(<Array as="points"><mxPoint x="200" y="50"/></Array>)"),
              std::string::npos);
    EXPECT_NE(association.find("startArrow=diamondThin;startSize=18;startFill=0"), std::string::npos);
    EXPECT_EQ(cell("v3") + cell("v4"), "");
    EXPECT_NE(cell("v2-0").find(R"(value="r")"), std::string::npos);
    EXPECT_NE(cell("v5").find(R"(source="v0" target="v2")"), std::string::npos);
    EXPECT_NE(cell("v7").find(R"(source="v0" target="v1")"), std::string::npos);
    EXPECT_NE(cell("v7").find(R"(<mxPoint x="400" y="166.6667"/></Array>)"), std::string::npos); // along the tree
    EXPECT_NE(output.text.find(R"(<diagram id="d1" name="">)"), std::string::npos);
}

/// Views that refer to each other in circles, to themselves and to nothing; numbers that no page has.
TEST_F(Drawn, IsAPictureWhateverTheFileHolds) {
    const Scene scene = sceneOf("", R"((object ClassView "Class" "A" @1 Parent_View @1 location (1000000000, -9e300)
  width -5 height nan)
(object AttachView "" @2 client @2 supplier @2)
(object AttachView "" @3 client @4 supplier @99)
(object AttachView "" @4 client @3 supplier @1 vertices (list Points (0, 1e99) (5, 5)))
(object InheritView "" @5 client @1 supplier @1)
(object HologramView "H" @6 label "h")
(object HologramLine "L" @7 client @1 supplier @6)
(object AssociationViewNew "" @8 roleview_list (list RoleViews (object RoleView "" @9)))
(object RoleView "" @11 client @8 supplier @1 parts (list l (object RoleView "")))
(object StateView "StartState" "" @1 width 1e12)
(object NoteView @10 label (object ItemLabel label "a b c" max_width -1 nlines 1e9)))");
    ASSERT_EQ(scene.items.size(), 13U);
    for (const Item& item : scene.items) {
        EXPECT_TRUE(item.hasBox || item.kind == "AssociationViewNew" || item.route.size() >= 2) << item.kind;
        EXPECT_TRUE(!item.hasBox || (item.box.width > 0 && item.box.height > 0)) << item.kind;
        EXPECT_FALSE(item.title.empty());
    }
    EXPECT_TRUE(scene.items[5].isUnknown && scene.items[5].hasBox && scene.items[6].isUnknown);
    EXPECT_TRUE(std::isfinite(scene.bounds.width) && std::isfinite(scene.bounds.height));
}

/// More nodes than the size of the file lets expect, so that they move while they are read.
TEST_F(Drawn, FindsElementsAmongManyNodes) {
    std::string points;
    for (int count = 0; count < 300'000; ++count) {
        points += "(1, 2)\n";
    }
    const Scene scene = sceneOf("(object Class \"A\" quid \"4F0000000001\" vertices (list Points\n" + points +
                                    "))\n(object Class \"B\" quid \"4F00000000ab\" abstract TRUE)",
                                R"((object ClassView "Class" "Logical View::A" @1 quidu "4F0000000001")
(object ClassView "Class" "Logical View::B" @2 quidu "4F00000000AB")
(object ClassView "Class" "Logical View::B" @3)
(object ClassView "Class" "Logical View::C" @4 quidu "4F0000000002"))");
    std::string found;
    for (const Item& item : scene.items) {
        found += item.isMissing ? "-" : item.texts.at(0).font.isItalic ? "B" : "A";
    }
    EXPECT_EQ(found, "ABB-");
}

TEST_F(Drawn, TakesTimeProportionalToTheViews) {
    const auto seconds = [&](int count) {
        std::ostringstream views;
        std::ostringstream others;
        views << "(object AssociationViewNew \"a\" @0 roleview_list (list RoleViews\n";
        for (int index = 1; index <= count; ++index) {
            views << "(object RoleView \"r\" @" << index + count << " client @0 supplier @" << index << ")\n";
            others << "(object ClassView \"Class\" \"C\" @" << index << ")\n(object AttachView \"\" @"
                   << index + 2 * count << " client @" << index + 2 * count + 1 << " supplier @" << index << ")\n";
        }
        views << "))\n" << others.str();
        const std::clock_t start = std::clock(); // of the processor: others may use it at the same time
        EXPECT_EQ(sceneOf("", views.str()).items.size(), static_cast<std::size_t>(3 * count + 1));
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    static_cast<void>(seconds(100));
    EXPECT_LT(seconds(8000), 40 * std::max(seconds(1000), 0.002)); // 64 times as much if it were quadratic
}

TEST(Metrics, MeasureAndBreakTexts) {
    EXPECT_DOUBLE_EQ(textWidth("iW单\xFF", 1000, false), 222 + 944 + 1000 + 600);
    EXPECT_EQ(linesOf("one two\nthree  four", 1000, false, 3600),
              (std::vector<std::string>{"one two", "three ", "four"}));
    EXPECT_EQ(linesOf("单单单", 10, false, 20), (std::vector<std::string>{"单单", "单"}));
    EXPECT_EQ(linesOf("", 10, false, 0), std::vector<std::string>{""});
}

/// The content of the elements of that name, entities as they are.
std::vector<std::string> contentsOf(const std::string& xml, const std::string& start, const std::string& end) {
    std::vector<std::string> contents;
    for (std::size_t at = xml.find(start); at != std::string::npos; at = xml.find(start, at)) {
        at = xml.find('>', at) + 1;
        contents.push_back(xml.substr(at, xml.find(end, at) - at));
    }
    return contents;
}

TEST_F(Drawn, LeavesHostileTextsTexts) {
    Scene scene;
    for (const std::string_view text : hostileTexts) {
        Item& item = scene.items.emplace_back();
        item.kind = text;
        item.quid = text;
        item.title = text;
        item.shape = Shape::rectangle;
        item.hasBox = true;
        Text& line = item.texts.emplace_back();
        line.text = line.font.face = text;
    }
    const std::string name = longHostileText();
    scene.name = name;
    TextOutput svg;
    TextOutput drawio;
    for (TextOutput* output : {&svg, &drawio}) {
        text::BufferedOutput buffered(*output);
        if (output == &svg) {
            writeSvg(scene, Theme::file, buffered);
        } else {
            DrawioWriter writer(Theme::plain, buffered);
            writer.write(scene);
            writer.end();
        }
        buffered.flush();
        EXPECT_EQ(output->text.find("<script"), std::string::npos);
        EXPECT_EQ(output->text.find('\x01'), std::string::npos);
    }
    const std::vector<std::string> texts = contentsOf(svg.text, "<text ", "</text>");
    ASSERT_EQ(texts.size(), hostileTexts.size());
    for (std::size_t index = 0; index < texts.size(); ++index) {
        EXPECT_EQ(texts[index], markup(hostileTexts[index]));
        EXPECT_NE(drawio.text.find(" value=\"" + markup(hostileTexts[index]) + "\""), std::string::npos);
    }
    EXPECT_EQ(markup("a<b>&\"\n\x01\xFF\xE2\x80\xAE单\uFFFF"),
              "a&lt;b&gt;&amp;&quot;&#10;\uFFFD\uFFFD\xE2\x80\xAE单\uFFFD");
    EXPECT_EQ(svg.text.find("font-family=\"'a'b'"), std::string::npos);
}

} // namespace
