// The formats that models are written in, and the table of them.

#include "Shop.h"
#include "host/model/KelTraversalOperation.h"
#include "source/SourceMap.h"
#include "support/Written.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <functional>

namespace {

std::string documentOf(const KelModel& model) {
    return writtenAs("json", model);
}

/// The value at `pointer`, its members in their order, on one line.
std::string partOf(const std::string& text, const char* pointer) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text;
    const rapidjson::Value* value = rapidjson::Pointer(pointer).Get(document);
    if (value == nullptr) {
        return "nothing";
    }
    rapidjson::StringBuffer line;
    rapidjson::Writer<rapidjson::StringBuffer> writer(line);
    value->Accept(writer);
    return {line.GetString(), line.GetSize()};
}

TEST(JsonWriter, LaysOutADocument) {
    KelModel model;
    addPackage(model, "Logical View").addNote(note(""));
    EXPECT_EQ(documentOf(model), R"({
  "format": "petal-model",
  "formatVersion": 1,
  "model": {
    "id": 1,
    "name": "",
    "packages": [
      {
        "id": 2,
        "name": "Logical View",
        "notes": [
          ""
        ]
      }
    ]
  }
}
)");
}

/// A model with one package, whose ids are 1 and 2 as long as the model has no types.
class JsonForms : public testing::Test {
protected:
    /// What the document holds at a JSON pointer, on one line; "nothing" where it holds nothing.
    std::string written(const char* pointer) { return partOf(documentOf(model), pointer); }
    std::string writtenElements() { return written("/model/packages/0/elements"); }

    KelModel model;
    KelDesignPackage& package = addPackage(model, "P");
    KelClass outside; // in no package
};

/// Makes every text the name of its field, and every flag true.
struct Filling final : KelTraversalOperation {
    void post_process(KelObject* object, void* /*userData*/) override {
        for (const KelField& field : object->getMetaClass().fields()) {
            if (const auto* text = std::get_if<KelString KelObject::*>(&field.member)) {
                object->*(*text) = field.name;
            } else if (const auto* flag = std::get_if<bool KelObject::*>(&field.member)) {
                object->*(*flag) = true;
            }
        }
    }
};

TEST(JsonWriter, WritesEveryKindOfObject) {
    Shop shop;
    Filling filling;
    shop.model.depthTraversal(filling, nullptr);
    EXPECT_EQ(partOf(documentOf(shop.model), "/model"),
              R"({"id":1,"name":"Shop","description":"description","origins":[{"sourceEncoding":"sourceEncoding",)"
              R"("sourceFormat":"sourceFormat","sourcePath":"sourcePath","sourceKind":"sourceKind",)"
              R"("tool":{"vendor":"vendorName","name":"toolName","versions":"toolVersions","web":"toolWeb",)"
              R"("methodology":"methodologySummary","bridgeId":"bridgeId"}}],"types":[{"id":2,"kind":"derived",)"
              R"("name":"Money","description":"description","dataType":"dataType","length":10,"scale":2,)"
              R"("userDefined":true,"physicalName":"physicalName","derivedFrom":3,"values":[{"name":"none",)"
              R"("value":"value","position":0}]},{"id":3,"kind":"base","name":"int","description":"description",)"
              R"("dataType":"dataType","userDefined":true,"physicalName":"physicalName"}],"packages":[{"id":4,)"
              R"("name":"Logical View","stereotype":"stereotype","description":"description",)"
              R"("notes":["description"],"packages":[{"id":5,"name":"Empty","stereotype":"stereotype",)"
              R"("description":"description"}],"elements":[{"id":6,"kind":"class","name":"Customer",)"
              R"("category":"interface","stereotype":"stereotype","description":"description","isAbstract":true,)"
              R"("isPersistent":true,"multiplicity":"multiplicity","keys":[{"id":7,"kind":"foreign","name":"fk",)"
              R"("userDefined":true,"candidateKey":18,"attributes":[12],"roleNameMaps":[{"name":"id","source":11,)"
              R"("destination":13}]}]},{"id":8,"kind":"class","name":"Order","category":"class",)"
              R"("stereotype":"stereotype","description":"description","notes":["description"],"isAbstract":true,)"
              R"("isPersistent":true,"space":3,"multiplicity":"multiplicity","concurrency":1,"arguments":[{"id":9,)"
              R"("name":"T","description":"description","position":0,"initialValue":"initialValue"}],)"
              R"("attributes":[{"id":10,"name":"a","description":"description","visibility":"public",)"
              R"("isStatic":true,"isDerived":true,"position":0,"initialValue":"initialValue"},)"
              R"({"id":11,"name":"pub","description":"description","type":3,"visibility":"public",)"
              R"("containment":"byValue","isStatic":true,"isDerived":true,"position":0,)"
              R"("initialValue":"initialValue"},{"id":12,"name":"prot","description":"description",)"
              R"("visibility":"protected","containment":"byReference","isStatic":true,"isDerived":true,"position":1,)"
              R"("initialValue":"initialValue"},{"id":13,"name":"priv","description":"description",)"
              R"("visibility":"private","isStatic":true,"isDerived":true,"position":2,)"
              R"("initialValue":"initialValue"},{"id":14,"name":"impl","description":"description",)"
              R"("visibility":"implementation","isStatic":true,"isDerived":true,"position":3,)"
              R"("initialValue":"initialValue"}],"operations":[{"id":15,"name":"total","description":"description",)"
              R"("visibility":"public","concurrency":3,"isFriend":true,"isStatic":true,"isVirtual":true,)"
              R"("semantics":"semantics","precondition":"precondition","postcondition":"postcondition",)"
              R"("returnType":3,"arguments":[{"id":16,"name":"a","description":"description","type":3,"position":0,)"
              R"("initialValue":"initialValue"},{"id":17,"name":"b","description":"description",)"
              R"("notes":["description"],"position":1,"initialValue":"initialValue"}]}],"keys":[{"id":18,)"
              R"("kind":"candidate","name":"pk","userDefined":true,"isPrimary":true,"attributes":[11]}]},)"
              R"({"id":19,"kind":"association","name":"placed","description":"description","isAggregation":true,)"
              R"("roles":[{"id":20,"name":"buyer","description":"description","class":6,)"
              R"("multiplicity":"multiplicity","isAggregate":true,"isNavigable":true,"isStatic":true,)"
              R"("isFriend":true,"isSource":true,"containment":"byValue","foreignKeys":[7]},)"
              R"({"id":21,"name":"","description":"description","class":8,"multiplicity":"multiplicity",)"
              R"("isAggregate":true,"isNavigable":true,"isStatic":true,"isFriend":true,"isSource":true,)"
              R"("containment":"byReference"}]},{"id":22,"kind":"generalization","name":"",)"
              R"("description":"description","visibility":"protected","isVirtual":true,"isFriend":true,)"
              R"("subtypes":[8],"supertypes":[6]},{"id":23,"kind":"realization","name":"r",)"
              R"("description":"description","realizationClass":8},{"id":24,"kind":"dependency","name":"d",)"
              R"("description":"description","client":8,"supplier":6}],"diagrams":[{"id":25,"name":"Main",)"
              R"("description":"description","notes":["description"],"elements":[19,8]}]}]})");
}

TEST_F(JsonForms, ClassesThatAreNotThereAreLeftOut) {
    auto& generalization = addElement<KelGeneralization>(package, "");
    auto& realization = addElement<KelRealization>(package, "");
    generalization.addSubtypeClass(&outside);
    generalization.addSubtypeClass(&addElement<KelClass>(package, "C"));
    realization.addSpecificationClass(&outside);
    addRole(addElement<KelAssociation>(package, ""), "", &outside);
    EXPECT_EQ(writtenElements(),
              R"([{"id":3,"kind":"generalization","name":"","visibility":"public","subtypes":[5]},)"
              R"({"id":4,"kind":"realization","name":""},{"id":5,"kind":"class","name":"C","category":"class"},)"
              R"({"id":6,"kind":"association","name":"","roles":[{"id":7,"name":""}]}])");
}

TEST_F(JsonForms, Categories) {
    auto& made = addElement<KelClass>(package, "C");
    std::string words;
    for (const int category : {1, 2, 3, 4, 5, 6, 8, 9}) {
        made.categoryType = static_cast<KelClassCategoryType>(category);
        words += written("/model/packages/0/elements/0/category");
    }
    EXPECT_EQ(words, R"("class""parameterizedClass""instantiatedClass""classUtility""parameterizedClassUtility")"
                     R"("instantiatedClassUtility""metaclass""interface")");
}

TEST_F(JsonForms, TextsThatAreNotUtf8MakeTheDocumentLossy) {
    package.setName(KelString("\"\uFFFD\0z", 6));
    EXPECT_EQ(written("/model/packages/0/name"), "\"\\\"\uFFFD\\u0000z\"");
    package.physicalName = "\xE9"; // is not written and does not count
    EXPECT_EQ(written("/lossy"), "nothing");
    package.addNote(note("caf\xE9"));
    EXPECT_EQ(written("/model/packages/0/notes"), "[\"caf\uFFFD\"]");
    EXPECT_EQ(written("/lossy"), "true");
}

/// The texts of all objects that a model owns; the name is one of them.
struct Texts final : KelTraversalOperation {
    void post_process(KelObject* object, void* /*userData*/) override {
        change.emplace_back([object](const char* text) { object->setName(text); });
        for (const KelField& field : object->getMetaClass().fields()) {
            if (const auto* text = std::get_if<KelString KelObject::*>(&field.member)) {
                change.emplace_back([object, member = *text](const char* text) { object->*member = text; });
            }
        }
    }
    std::vector<std::function<void(const char*)>> change;
};

// Whatever text of a model is invalid: the document says so exactly if it shows it.
TEST(JsonWriter, IsLossyWhenAnyTextOfItIs) {
    Shop shop;
    Texts texts;
    shop.model.depthTraversal(texts, nullptr);
    std::size_t shown = 0;
    for (const auto& change : texts.change) {
        change("x\xFF");
        const std::string document = documentOf(shop.model);
        const bool isShown = document.find("x\uFFFD") != std::string::npos;
        ASSERT_EQ(document.find("\"lossy\": true") != std::string::npos, isShown) << document;
        shown += static_cast<std::size_t>(isShown);
        change("");
    }
    EXPECT_GT(shown, 80U);
    EXPECT_LT(shown, texts.change.size());
}

TEST_F(JsonForms, PlacesFollowTheIds) {
    auto& made = addElement<KelClass>(package, "C");
    made.addAttribute(named<KelAttribute>("x"));
    source::SourceMap places({"m.mdl", "unit \xE9.cat"});
    places.add(package, {.file = 0, .begin = {.offset = 40, .line = 3, .column = 2}, .end = 90, .quid = "3C5A"});
    places.add(made, {.file = 1, .begin = {.offset = 9, .line = 5'000'000'000, .column = 1}, .end = 10, .quid = "1"});
    places.add(*made.attributes().first(), {.file = 1, .begin = {}, .end = 1, .quid = ""}); // a cause, which has none
    const std::string with = writtenAs("json", model, {"places=true"}, &places);
    const std::string unit = "\"file\":\"unit \uFFFD.cat\"";
    EXPECT_EQ(
        partOf(with, "/model"),
        R"({"id":1,"name":"","packages":[{"id":2,"quid":"3C5A","line":3,"name":"P","elements":[{"id":3,"quid":"1",)" +
            unit + R"(,"line":5000000000,"kind":"class","name":"C","category":"class","attributes":[{"id":4,)" + unit +
            R"(,"line":1,"name":"x","visibility":"public","position":0}]}]}]})");
    EXPECT_EQ(partOf(with, "/lossy"), "true"); // the name of the unit
    EXPECT_EQ(writtenAs("json", model, {"places=false"}, &places), documentOf(model));
    EXPECT_EQ(writtenAs("json", model, {"places=true"}), documentOf(model));
}

TEST(TreeWriter, OutlinesEveryKindOfObject) {
    EXPECT_EQ(writtenAs("tree", Shop().model), R"(model Shop
  origin: /models/Shop.mdl (format MDL, encoding UTF-8)
  package Logical View <<layer>>
    note: to be
      | reviewed
    package Empty
    interface Customer
      foreign key fk: prot -> pk of Order
        role name map id: pub -> priv
    class Order <<entity>> [1..n] (abstract, persistent)
      note: central
      template argument T
      + a
      + pub: int = 7 (static, derived, by value)
      # prot (by reference)
      - priv
      ~ impl
      + total(a: int, b = 0): int (static, virtual, friend)
        note on argument b: optional
      primary key pk: pub
    association placed: Customer, Order (aggregation)
      role buyer: Customer [1] (source, navigable, by value, foreign key fk)
      role: Order (aggregate, by reference, static, friend)
    generalization: Order -> Customer (protected, virtual, friend)
    realization r: Order -> ?
    dependency d: Order -> Customer
    diagram Main
      note: drawn
      shows association placed: Customer, Order (aggregation)
      shows class Order <<entity>> [1..n] (abstract, persistent)
  type Money: SQL_DECIMAL(10,2) (from int, user-defined)
    value none = 0
  base type int: SQL_INTEGER
)");
}

TEST(Writers, DepthCostsNeitherStackNorWidth) {
    constexpr int depth = 100000;
    KelModel model;
    addNested(model, depth);
    const std::string outline = writtenAs("tree", model);
    EXPECT_TRUE(outline.ends_with("\n" + std::string(40, ' ') + "(depth 100000) package p\n"));
    MemoryOutput output;
    writeAs("json", model, output);
    EXPECT_LT(output.text.find("\"id\": 100001,"), output.text.size());
    EXPECT_EQ(output.text.find(std::string(41, ' ')), std::string::npos) << "indentation above 40 spaces";
    EXPECT_LE(output.longestWrite, 64U * 1024) << "written in pieces";
}

TEST(Writers, PassFailuresOn) {
    KelModel model;
    KelDesignPackage& package = addPackage(model, "P");
    for (int made = 0; made < 3000; ++made) {
        addElement<KelClass>(package, "some class");
    }
    const std::string whole = documentOf(model);
    std::size_t failAt = 0;
    for (bool failed = true; failed; ++failAt) {
        MemoryOutput output(failAt);
        try {
            writeAs("json", model, output);
            failed = false;
            EXPECT_EQ(output.text, whole);
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), std::errc::no_space_on_device);
            EXPECT_EQ(output.writes, failAt + 1) << "written to after it failed";
        }
    }
    EXPECT_GT(failAt, 3U) << "the document is written in pieces";
}

TEST(Exporters, AreFoundByFormatAndByEnding) {
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        EXPECT_EQ(exporter::findExporter(exporter.format), &exporter);
        EXPECT_EQ(exporter.write == nullptr, exporter.shape == exporter::Shape::nothing) << exporter.format;
        EXPECT_EQ(exporter.endings.empty(), exporter.shape == exporter::Shape::nothing) << exporter.format;
        for (const std::string_view ending : exporter.endings) {
            EXPECT_EQ(exporter::findExporterByEnding("a.b/M" + std::string(ending)), &exporter) << ending;
        }
        for (const exporter::Option& option : exporter.options) {
            const std::vector<std::string_view> values = exporter::valuesOf(option);
            const bool hasDefault = !values.empty() && !option.byDefault.empty();
            EXPECT_EQ(std::ranges::count(values, option.byDefault), hasDefault ? 1 : 0) << option.name;
        }
    }
    EXPECT_EQ(exporter::findExporterByEnding("M.JSON"), exporter::findExporter("json"));
    EXPECT_EQ(exporter::findExporter("JSON"), nullptr);
    for (const char* unknown : {"", "json", ".json", "m.json/x", "m.json~", "m."}) {
        EXPECT_EQ(exporter::findExporterByEnding(unknown), nullptr) << unknown;
    }
}

TEST(Exporters, OptionsTakeOnlyTheValuesOfTheTable) {
    constexpr std::array options{exporter::Option{"colour", "red|green|blue", "green", ""},
                                 exporter::Option{"wide", "true|false", "false", ""},
                                 exporter::Option{"most", "N", "9", "", exporter::Accepts::number},
                                 exporter::Option{"only", "NAME", "", "", exporter::Accepts::text, true},
                                 exporter::Option{"kind.WORD", "a|b", "", "", exporter::Accepts::word, true}};
    const auto read = [&](const std::vector<std::string>& settings) -> std::string {
        try {
            const exporter::OptionValues values(options, settings);
            std::string result = values.get("colour") + (values.isOn("wide") ? " wide" : "");
            result += values.number("most") != 9 ? " " + std::to_string(values.number("most")) : "";
            for (const std::string& only : values.all("only")) {
                result += " '" + only + "'";
            }
            for (const auto& [word, kind] : values.family("kind.WORD")) {
                result.append(" ").append(word).append(":").append(kind);
            }
            return result;
        } catch (const exporter::WrongOption& error) {
            return error.what();
        }
    };
    const std::string all = "the options are colour=red|green|blue, wide=true|false, most=N, only=NAME, kind.WORD=a|b";
    EXPECT_EQ(read({}), "green");
    EXPECT_EQ(read({"wide=true", "colour=red", "colour=blue"}), "blue wide");
    EXPECT_EQ(read({"only=b c", "most=12", "only=", "kind.x.y=a", "kind.Z=b"}), "green 12 'b c' '' x.y:a Z:b");
    EXPECT_EQ(read({"kind.=a"}), "there is no option 'kind.'; " + all);
    EXPECT_EQ(read({"kind.x=c"}), "'kind.x=c' is not one of kind.WORD=a|b");
    for (const char* noNumber : {"most=", "most=0", "most=-1", "most=1x", "most=1234567890"}) {
        EXPECT_EQ(read({noNumber}), std::string("'") + noNumber + "' is not one of most=N");
    }
    EXPECT_EQ(read({"width=1"}), "there is no option 'width'; " + all);
    EXPECT_EQ(read({"=red"}), "there is no option ''; " + all);
    EXPECT_EQ(read({"wide"}), "'wide' is not NAME=VALUE; " + all);
    EXPECT_EQ(read({"colour="}), "'colour=' is not one of colour=red|green|blue");
    EXPECT_EQ(read({"colour=red|green"}), "'colour=red|green' is not one of colour=red|green|blue");
    EXPECT_EQ(read({"wide=True"}), "'wide=True' is not one of wide=true|false");
}

TEST(Omissions, AreCountedByKindAndReason) {
    constexpr exporter::Omission behaviour{"operation", "operations", "tables have no behaviour"};
    constexpr exporter::Omission template_{"operation", "operations", "templates are not tables"};
    constexpr exporter::Omission friends{"friend flag", "friend flags", "tables have no friends"};
    exporter::Omissions omissions;
    omissions.add(friends, 0);
    EXPECT_TRUE(omissions.isEmpty());
    EXPECT_EQ(omissions.summary(), "");
    omissions.add(behaviour, 9);
    omissions.add(friends);
    omissions.add(template_, 2);
    omissions.add(behaviour);
    EXPECT_EQ(omissions.summary(), "12 operations, 1 friend flag");
    std::string rows;
    for (const auto& [omission, count] : omissions.getCounts()) {
        rows.append(omission.why) += " " + std::to_string(count) + "; ";
    }
    EXPECT_EQ(rows, "tables have no behaviour 10; tables have no friends 1; templates are not tables 2; ");
}

} // namespace
