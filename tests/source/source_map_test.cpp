#include "host/model/KelTraversalOperation.h"
#include "scanner/RealModels.h"
#include "source/makeSourceMap.h"
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

} // namespace
