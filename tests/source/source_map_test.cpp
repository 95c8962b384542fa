#include "host/model/KelTraversalOperation.h"
#include "notation/InputWindow.h"
#include "scanner/RealModels.h"
#include "source/QuidSearch.h"
#include "source/makeQuidMap.h"
#include "source/makeSourceMap.h"
#include "source/readOwner.h"
#include "support/ImportedModel.h"
#include "units/PieceMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

using source::SourceMap;
using source::SourcePlace;

/// A line for every object of the model: its type, name, line and quid; "nowhere" without a place.
class PlaceLines final : public KelTraversalOperation {
public:
    explicit PlaceLines(SourceMap map) : map_(std::move(map)) {}

    void pre_process(KelObject* object, void*& /*userData*/) override {
        const SourcePlace* place = map_.find(*object);
        const std::string where = place == nullptr ? "nowhere" : std::to_string(place->begin.line) + " " + place->quid;
        text +=
            std::to_string(static_cast<int>(object->elementType)) + " " + object->getName().text() + " " + where + "\n";
        homeless += place == nullptr ? 1 : 0;
        EXPECT_TRUE(place == nullptr || place->begin.offset < place->end);
    }
    void post_process(KelObject* /*object*/, void* /*userData*/) override {}

    std::string text;
    int homeless = 0;

private:
    SourceMap map_;
};

PlaceLines placesOf(const std::string& path) {
    source::Trace trace;
    ImportedModel imported = ImportedModel::ofFile(path);
    EXPECT_EQ(imported.failure, "");
    trace.locate(nullptr);
    units::UnitTree tree;
    tree.files.push_back({path, 0, {}, {}});
    PlaceLines lines(source::makeSourceMap(tree, trace, imported.model));
    imported.model._depthTraversal(lines, nullptr);
    return lines;
}

// An object that the file defines has the place of its own object; one that is only named, or completes the model, has
// the place of its cause.
TEST(SourceMap, HasThePlacesOfObjectsAndOfCauses) {
    const std::string path = testing::TempDir() + "source_map.mdl";
    std::ofstream(path) << petalHeader << R"((object Design "Logical View"
 quid "D"
 root_category (object Class_Category "Logical View"
 quid "1A"
 logical_models (list l
 (object Class "Whole"
  quid "1B"
  class_attributes (list l
   (object ClassAttribute "untyped"
    quid "1C")
   (object ClassAttribute "kind"
    quid "1D"
    type "Kind")))
 (object Class "Part"
  quid "1E")
  (object Association "has"
  quid "1F"
  roles (list l
   (object Role "part"
    quid "20"
    supplier "Part"
    keys (list l
     (object ClassAttribute "number"
      quid "21"
      type "long")))
   (object Role "whole"
    quid "22"
    supplier "Whole"
    is_aggregate TRUE))))
 logical_presentations (list l
 (object ClassDiagram "Main"
  quid "23"
  items (list l
   (object ClassView "Class" "Stranger" @1
    quid "24")
   (object NoteView @2
    Parent_View @2
    label "remark")
   (object AttachView "" @3
    client @2
    supplier @1))))))
)";
    const PlaceLines lines = placesOf(path);
    EXPECT_EQ(lines.text, "5 Kind 15 \n4 int 13 \n5 int 13 \n5 long 27 \n4 undefined 15 \n98  5 \n"
                          "9 Logical View 7 1A\n13 Whole 10 1B\n14 kind 15 1D\n14 number 27 \n14 untyped 13 1C\n"
                          "22  27 \n13 Part 18 1E\n14 number 27 21\n21 number 27 \n17 has 20 1F\n18 part 23 20\n"
                          "18 whole 30 22\n11 Main 35 23\n9 Use Case Classes in Class Diagrams 38 \n"
                          "13 Stranger 38 \n1  40 \n");
    EXPECT_EQ(lines.homeless, 0);
    std::filesystem::remove(path);
}

TEST(SourceMap, HasAPlaceForEveryObjectOfEveryModel) {
    std::vector<std::filesystem::path> models = rose::test::realModels();
    for (const char* example : {"/bookshop.mdl", "/everything.mdl"}) {
        models.push_back(std::string(PETAL_EXAMPLES) + example);
    }
    for (const auto& model : models) {
        SCOPED_TRACE(model);
        const PlaceLines lines = placesOf(model);
        EXPECT_EQ(lines.homeless, 0) << lines.text;
    }
}

/// A line for every object of the model that has a quid.
class QuidLines final : public KelTraversalOperation {
public:
    QuidLines(KelModel& model, const SourceMap& map) : map_(map) {
        pre_process(&model, unused_);
        model._depthTraversal(*this, nullptr);
    }

    void pre_process(KelObject* object, void*& /*userData*/) override {
        const SourcePlace* place = map_.find(*object);
        if (place != nullptr && !place->quid.empty()) {
            text += std::string(object->getName().view()) + "=" + place->quid + " ";
        }
    }
    void post_process(KelObject* /*object*/, void* /*userData*/) override {}

    std::string text;

private:
    const SourceMap& map_;
    void* unused_ = nullptr;
};

std::string quidsOf(const std::string& path, source::Steps steps, decltype(source::makeQuidMap)* make) {
    source::Trace trace(steps);
    ImportedModel imported = ImportedModel::ofFile(path);
    trace.locate(nullptr);
    units::UnitTree tree;
    tree.files.push_back({path, 0, {}, {}});
    return QuidLines(imported.model, make(tree, trace, imported.model)).text;
}

/// The quids that reading a file gives; the search, and reading where only makings were recorded, must give the same.
std::string quidsOf(const std::string& path) {
    std::string quids = quidsOf(path, source::Steps::all, source::makeSourceMap);
    EXPECT_EQ(quidsOf(path, source::Steps::makings, source::makeQuidMap), quids);
    EXPECT_EQ(quidsOf(path, source::Steps::makings, source::makeSourceMap), quids);
    return quids;
}

bool isSearchLost(const std::string& path) {
    source::QuidSearch search(path);
    while (search.next()) {
    }
    return search.isLost();
}

// The search looks at little of the text, and must know when that is not enough.
TEST(QuidMap, HasTheQuidsThatReadingGives) {
    struct Case {
        const char* classes; // the content of the logical view
        const char* quids;   // those of the classes
        bool isLost = false;
    };
    const std::string deep = std::string(60'000, '(') + std::string(60'000, ')');
    const std::string attributes =
        "  attributes (list Attribute_Set\n   (object Attribute\n    tool \"quid \\\"7\\\"\")";
    const std::string late = "(object Class \"A\"\n" + attributes + ")\n  quid \"1\")";
    std::string many = "(object Class \"A\"\n  attributes (list Attribute_Set";
    for (int count = 0; count < 5'000; ++count) {
        many += "\n   (object Attribute\n    tool \"t\"\n    value (value Text \"quid\"))";
    }
    const std::string longer =
        many + ")\n  x (list l\n   (object Operation \"f\"\n    y 1\n    quid \"2\"))\n  quid \"1\")";
    const std::string longWithComment = many + "\n   (object x # y\n   ))\n  quid \"1\")";
    const std::string longWithin = many + "\n   quid \"1\")\n  quid \"2\")";
    const std::string unbalanced = "(object Class \"A\"\n" + attributes + "))\n  quid \"1\")";
    const std::string nested = "(object Class \"A\"\n  operations (list Operations\n   (object Operation \"f\"\n"
                               "    quid \"2\"))\n  quid \"1\")";
    const std::string far = "(object Class \"A\"\n  x (list l\n" + std::string(700'000, '\n') + "   )\n  quid \"1\")";
    const std::string tooDeep = "(object Class \"A\"\n  x " + deep + "\n  quid \"1\")";
    const Case cases[] = {
        {"(object Class \"A\" @7\n  quid\n \"1\"\n  quid \"2\")\n (object Class \"B\"\n  quid \"\"\n  quid \"3\")",
         "A=1 B=3 "},
        {late.c_str(), "A=1 "},
        {nested.c_str(), "A=1 f=2 "},
        {far.c_str(), "A=1 "},
        {longer.c_str(), "A=1 f=2 "},
        {longWithComment.c_str(), "A=1 "},
        {longWithin.c_str(), "A=2 ", true},
        {tooDeep.c_str(), "A=1 ", true},
        {unbalanced.c_str(), "Logical View=1 ", true},
        {"(object Class \"A\" quid \"1\") (object Class \"B\" stereotype \"s\" quid \"2\")", "A=1 B=2 "},
        {"(object Class \"A\"\n  quid \"1)\n  quid \"2\")", "Logical View=2 A=1 ", true},
        {"(object Class \"A\"\n  quid \"a\\\"b\")", "A=a\\\"b ", true},
        {"(object Class \"A\"\n  documentation\n| (object Class \"C\"\n| quid \"1\"\n  quid \"2\")", "A=2 "},
        {"(object Class \"A\" # (object x\n ; quid \"1\"\n  // quid \"3\"\n  quid \"2\")", "A=2 "},
        {"(object Class \"A\"\n  x (y quid \"1\")\n  quid # c\n  \"2\")", "A=2 ", true},
        {"(object Class\n  quid \"1\")\n (object\n Class \"B\"\n  quid \"2\")", "", true},
        {"(object Class \"A\"\n  quid , \"1\")", "A=1 ", true},
        {"(object Class \"A\"\n  x (list l quid \"1\"))", "A=1 ", true},
    };
    const std::string path = testing::TempDir() + "quid_map.mdl";
    for (const Case& one : cases) {
        SCOPED_TRACE(std::string(one.classes).substr(0, 200));
        std::ofstream(path) << petalHeader << "(object Design \"D\"\n root_category (object Class_Category "
                            << "\"Logical View\"\n  logical_models (list l\n " << one.classes << ")))\n";
        EXPECT_EQ(quidsOf(path), one.quids);
        EXPECT_EQ(isSearchLost(path), one.isLost);
    }
    std::filesystem::remove(path);
}

// The tokens near a quid, and at the end of the text, are told as the reader tells them.
TEST(QuidMap, HasTheQuidsWhateverTakesThePlaceOfAByte) {
    const std::string begin = "(object Petal\n version 42)\n(object Class_Category \"Logical View\"\n logical_models ";
    const std::string head = "(object Class \"A\\\" b\tc\" @3\n \f\tquid  \t\"1A\"";
    const std::string path = testing::TempDir() + "quid_map.mdl";
    int found = 0;
    for (std::size_t at = 0; at < head.size(); ++at) {
        for (const char byte : {'(', ')', '"', '\\', '|', '#', '\n', '\r', '\0', '\x01', '\t', ' ', '.', '\xE9'}) {
            std::string text = begin + head;
            text[begin.size() + at] = byte;
            std::ofstream(path) << text; // without the end of a line, so that what is behind the text is looked at
            SCOPED_TRACE(text);
            found += quidsOf(path).ends_with("=1A ") ? 1 : 0;
        }
    }
    EXPECT_GT(found, 200);
    std::filesystem::remove(path);
}

// Where lines are read in place, the result is that of the reader, whatever takes the place of a byte.
TEST(QuidMap, IsReadInPlaceAsByTheReader) {
    const std::string head = "(object Class \"A\" @3\n  attributes (list Attribute_Set\n    (object Attribute\n"
                             "      tool \"IDL\"\n      value (value Text \"T\")))\n  size 4\n  at (1, -2)\n  ";
    const std::string rest = "quid \"3C5A\")\n" + std::string(notation::InputWindow::readable, ' ');
    int read = 0;
    for (std::size_t at = 0; at < head.size(); ++at) {
        for (const char byte : {head[at], ' ', '\n', '(', ')', '"', '|', ',', '#', '\\', '\r', '\0', 'q', '\xE9'}) {
            std::string text = head + rest;
            text[at] = byte;
            notation::MemorySource source(text);
            const source::QuidOwner expected = source::readOwner(source, 100, 100 + head.size(), 16'384);
            const auto owner = source::readUsualOwner(text.data(), 100, 100 + head.size());
            if (!owner) {
                EXPECT_NE(text, head + rest);
                continue;
            }
            ++read;
            EXPECT_EQ(owner->reading, expected.reading) << text;
            EXPECT_EQ(owner->begin, expected.begin) << text;
            EXPECT_EQ(owner->headEnd, expected.headEnd) << text;
        }
    }
    EXPECT_GT(read, 300);
}

// The model has the quid of its design or, without one, that of the first object.
TEST(QuidMap, HasTheQuidOfTheModel) {
    const std::string view = " root_category (object Class_Category \"Logical View\"\n  quid \"V\")";
    const std::string path = testing::TempDir() + "quid_map.mdl";
    const std::string texts[] = {
        "(object Petal\n quid \"P\")\n(object Design \"D\"\n" + view + "\n quid \"D\")",
        "(object Petal\n quid \"P\")\n(object Design \"D\"\n" + view + ")\n(object Design \"E\"\n quid \"E\")",
        "(object Petal\n quid \"P\")\n(object X \"Design\"\n" + view + ")",
        "(object Petal\r\n quid \"P\")\r\n(object Design \"D\"\r\n quid \"D\"\r\n" + view + ")",
        "(object Petal\r quid \"P\")\r(object Design \"D\"\r quid \"D\"\r" + view + ")",
    };
    std::string quids;
    for (const std::string& text : texts) {
        std::ofstream(path) << text;
        quids += quidsOf(path) + "; ";
    }
    EXPECT_EQ(quids, "quid_map=D Logical View=V ; quid_map=E Logical View=V ; quid_map=P Logical View=V ; "
                     "quid_map=D Logical View=V ; quid_map=D Logical View=V ; ");
    std::filesystem::remove(path);
}

TEST(QuidMap, IsFoundWithoutReadingRealModels) {
    for (const auto& model : rose::test::realModels()) {
        SCOPED_TRACE(model);
        quidsOf(model);
        EXPECT_FALSE(isSearchLost(model));
    }
}

} // namespace
