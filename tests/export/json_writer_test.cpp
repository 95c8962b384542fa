#include "export/JsonWriter.h"

#include "MemoryOutput.h"
#include "ModelBuilding.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelTypeValue.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

std::string documentOf(const KelModel& model) {
    MemoryOutput output;
    exporter::JsonWriter(output).write(model);
    return output.text;
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
    model.setName("Shop");
    KelDesignPackage& logical = addPackage(model, "Logical View");
    logical.addNote(note("first"));
    logical.addNote(note(""));
    addPackage(logical, "Orders").stereotype = "layer";
    addElement<KelClass>(logical, "Order");
    EXPECT_EQ(documentOf(model), R"({
  "format": "petal-model",
  "formatVersion": 1,
  "model": {
    "id": 1,
    "name": "Shop",
    "packages": [
      {
        "id": 2,
        "name": "Logical View",
        "notes": [
          "first",
          ""
        ],
        "packages": [
          {
            "id": 3,
            "name": "Orders",
            "stereotype": "layer"
          }
        ],
        "elements": [
          {
            "id": 4,
            "kind": "class",
            "name": "Order",
            "category": "class"
          }
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

TEST_F(JsonForms, AnEmptyNameIsWritten) {
    model.description = "d";
    EXPECT_EQ(written("/model"), R"({"id":1,"name":"","description":"d","packages":[{"id":2,"name":"P"}]})");
}

TEST_F(JsonForms, Origins) {
    auto* origin = new KelMetadataOrigin;
    model.addMetadataOrigin(origin);
    model.addMetadataOrigin(new KelMetadataOrigin);
    origin->sourceEncoding = "ibm-5348";
    origin->sourceFormat = "MDL";
    origin->sourcePath = "/a.mdl";
    origin->sourceKind = "OBJ";
    origin->vendorName = "v";
    origin->toolName = "n";
    origin->toolVersions = "1";
    origin->toolWeb = "w";
    origin->methodologySummary = "m";
    origin->bridgeId = "b";
    EXPECT_EQ(written("/model/origins"),
              R"([{"sourceEncoding":"ibm-5348","sourceFormat":"MDL","sourcePath":"/a.mdl","sourceKind":"OBJ",)"
              R"("tool":{"vendor":"v","name":"n","versions":"1","web":"w","methodology":"m","bridgeId":"b"}},{}])");
}

TEST_F(JsonForms, TypesComeFirstAndByName) {
    auto* number = named<KelBaseType>("number");
    auto* money = named<KelDerivedType>("Money");
    model.addType(number);
    model.addType(money);
    number->dataType = "SQL_NUMERIC";
    money->description = "d";
    money->dataType = "SQL_DECIMAL";
    money->length = 10;
    money->scale = -2;
    money->userDefined = true;
    money->physicalName = "DECIMAL";
    money->addDerivedFromConcreteType(number);
    for (const char* text : {"red", ""}) {
        auto* value = named<KelTypeValue>(text);
        value->setValue(text);
        value->position = 7;
        money->addTypeValue(value);
    }
    EXPECT_EQ(
        written("/model/types"),
        R"([{"id":2,"kind":"derived","name":"Money","description":"d","dataType":"SQL_DECIMAL","length":10,"scale":-2,)"
        R"("userDefined":true,"physicalName":"DECIMAL","derivedFrom":3,)"
        R"("values":[{"name":"red","value":"red","position":7},{"name":"","position":7}]},)"
        R"({"id":3,"kind":"base","name":"number","dataType":"SQL_NUMERIC"}])");
}

TEST_F(JsonForms, Class) {
    auto& made = addElement<KelClass>(package, "C");
    made.categoryType = KelClassCategoryType::parameterizedClassUtility;
    made.stereotype = "s";
    made.description = "d";
    made.addNote(note("n"));
    made.isAbstract = made.isPersistent = true;
    made.space = 3;
    made.multiplicity = "0..n";
    made.concurrency = 1;
    made.addArgument(named<KelArgument>("T"));
    made.addOperation(named<KelOperation>("run"));
    EXPECT_EQ(
        writtenElements(),
        R"([{"id":3,"kind":"class","name":"C","category":"parameterizedClassUtility","stereotype":"s","description":"d",)"
        R"("notes":["n"],"isAbstract":true,"isPersistent":true,"space":3,"multiplicity":"0..n","concurrency":1,)"
        R"("arguments":[{"id":4,"name":"T","position":0}],)"
        R"("operations":[{"id":5,"name":"run","visibility":"public"}]}])");
}

TEST_F(JsonForms, Categories) {
    struct Row {
        int category;
        const char* expected;
    };
    constexpr Row rows[] = {
        {1, R"("class")"},
        {2, R"("parameterizedClass")"},
        {3, R"("instantiatedClass")"},
        {4, R"("classUtility")"},
        {5, R"("parameterizedClassUtility")"},
        {6, R"("instantiatedClassUtility")"},
        {8, R"("metaclass")"},
        {9, R"("interface")"},
    };
    auto& made = addElement<KelClass>(package, "C");
    for (const Row& row : rows) {
        made.categoryType = static_cast<KelClassCategoryType>(row.category);
        EXPECT_EQ(written("/model/packages/0/elements/0/category"), row.expected);
    }
}

TEST_F(JsonForms, AttributesByPositionThenByName) {
    auto& made = addElement<KelClass>(package, "C");
    for (const char* name : {"b", "a", "c"}) {
        made.addAttribute(named<KelAttribute>(name));
    }
    made.getAttribute(0)->containment = 0;
    KelAttribute& first = *made.getAttribute(2);
    first.position = -1;
    first.visibility = 3;
    first.containment = 1;
    first.isStatic = first.isDerived = true;
    first.initialValue = "0";
    first.description = "d";
    first.addNote(note("n"));
    model.addType(named<KelBaseType>("int"));
    first.addType(model.types().first());
    EXPECT_EQ(written("/model/packages/0/elements/0/attributes"),
              R"([{"id":5,"name":"c","description":"d","notes":["n"],"type":2,"visibility":"implementation",)"
              R"("containment":"byReference","isStatic":true,"isDerived":true,"position":-1,"initialValue":"0"},)"
              R"({"id":6,"name":"a","visibility":"public","containment":"byValue","position":0},)"
              R"({"id":7,"name":"b","visibility":"public","position":0}])");
}

TEST_F(JsonForms, Operation) {
    auto* made = named<KelOperation>("f");
    addElement<KelClass>(package, "C").addOperation(made);
    made->description = "d";
    made->addNote(note("n"));
    made->visibility = 1;
    made->concurrency = 3;
    made->isFriend = made->isStatic = made->isVirtual = true;
    made->semantics = "s";
    made->precondition = "p";
    made->postcondition = "q";
    model.addType(named<KelBaseType>("int"));
    made->addReturnType(model.types().first());
    auto* argument = named<KelArgument>("x");
    made->addArgument(argument);
    argument->addType(model.types().first());
    argument->position = 4;
    argument->initialValue = "1";
    argument->description = "d";
    argument->addNote(note("n"));
    EXPECT_EQ(
        written("/model/packages/0/elements/0/operations"),
        R"([{"id":5,"name":"f","description":"d","notes":["n"],"visibility":"protected","concurrency":3,)"
        R"("isFriend":true,"isStatic":true,"isVirtual":true,"semantics":"s","precondition":"p","postcondition":"q",)"
        R"("returnType":2,"arguments":[)"
        R"({"id":6,"name":"x","description":"d","notes":["n"],"type":2,"position":4,"initialValue":"1"}]}])");
}

TEST_F(JsonForms, Keys) {
    auto& made = addElement<KelClass>(package, "C");
    made.addAttribute(named<KelAttribute>("a"));
    made.addAttribute(named<KelAttribute>("b"));
    auto* candidate = named<KelCandidateKey>("ck");
    auto* foreign = named<KelForeignKey>("fk");
    made.addKey(foreign);
    made.addKey(candidate);
    candidate->addPrimaryOfClass(&made);
    candidate->userDefined = true;
    candidate->addAttribute(made.getAttribute(1));
    candidate->addAttribute(made.getAttribute(0));
    foreign->addCandidateKey(candidate);
    foreign->addAttribute(made.getAttribute(1));
    auto* map = named<KelAssociationRoleNameMap>("m");
    map->addForeignKey(foreign);
    map->addSourceAttribute(made.getAttribute(0));
    map->addDestinationAttribute(made.getAttribute(1));
    EXPECT_EQ(written("/model/packages/0/elements/0/keys"),
              R"([{"id":6,"kind":"foreign","name":"fk","candidateKey":7,"attributes":[5],)"
              R"("roleNameMaps":[{"name":"m","source":4,"destination":5}]},)"
              R"({"id":7,"kind":"candidate","name":"ck","userDefined":true,"isPrimary":true,"attributes":[4,5]}])");
}

TEST_F(JsonForms, Association) {
    auto& target = addElement<KelClass>(package, "C");
    auto* key = named<KelForeignKey>("fk");
    target.addKey(key);
    auto& made = addElement<KelAssociation>(package, "has");
    made.isAggregation = true;
    made.description = "d";
    KelAssociationRole& role = addRole(made, "r", &target);
    role.multiplicity = "1";
    role.isAggregate = role.isNavigable = role.isStatic = role.isFriend = role.isSource = true;
    role.containment = 0;
    role.addForeignKey(key);
    addRole(made, "", &outside);
    EXPECT_EQ(
        written("/model/packages/0/elements/1"),
        R"({"id":5,"kind":"association","name":"has","description":"d","isAggregation":true,"roles":[)"
        R"({"id":6,"name":"r","class":3,"multiplicity":"1","isAggregate":true,"isNavigable":true,"isStatic":true,)"
        R"("isFriend":true,"isSource":true,"containment":"byValue","foreignKeys":[4]},{"id":7,"name":""}]})");
}

TEST_F(JsonForms, OtherRelationshipsLeaveOutClassesThatAreNotThere) {
    auto& generalization = addElement<KelGeneralization>(package, "g");
    auto& realization = addElement<KelRealization>(package, "r");
    auto& dependency = addElement<KelDependency>(package, "d");
    auto& inside = addElement<KelClass>(package, "C");
    generalization.visibility = 2;
    generalization.isVirtual = generalization.isFriend = true;
    generalization.addSubtypeClass(&outside);
    generalization.addSubtypeClass(&inside);
    generalization.addSupertypeClass(&outside);
    realization.addRealizationClass(&inside);
    realization.addSpecificationClass(&outside);
    dependency.addClientClass(&inside);
    dependency.addSupplierClass(&inside);
    EXPECT_EQ(writtenElements(),
              R"([{"id":3,"kind":"generalization","name":"g","visibility":"private","isVirtual":true,"isFriend":true,)"
              R"("subtypes":[6]},{"id":4,"kind":"realization","name":"r","realizationClass":6},)"
              R"({"id":5,"kind":"dependency","name":"d","client":6,"supplier":6},)"
              R"({"id":6,"kind":"class","name":"C","category":"class"}])");
}

TEST_F(JsonForms, DiagramsListWhatWasDrawnInThatOrder) {
    auto& first = addElement<KelClass>(package, "A");
    auto& second = addElement<KelClass>(package, "B");
    auto* diagram = named<KelClassDiagram>("Main");
    package.addDiagram(diagram);
    diagram->addModelElement(&second);
    diagram->addModelElement(&first);
    diagram->addNote(note("n"));
    diagram->description = "d";
    EXPECT_EQ(written("/model/packages/0/diagrams"),
              R"([{"id":5,"name":"Main","description":"d","notes":["n"],"elements":[4,3]}])");
}

TEST_F(JsonForms, Texts) {
    struct Row {
        std::string_view text;
        const char* expected;
        const char* lossy;
    };
    constexpr Row rows[] = {
        {{"\"\\/\x01\n\0z", 7}, R"("\"\\/\u0001\n\u0000z")", "nothing"},
        {"\uFFFD\xC3\xA9", "\"\uFFFD\u00E9\"", "nothing"},
        {"caf\xE9", "\"caf\uFFFD\"", "true"},
    };
    for (const Row& row : rows) {
        package.setName(KelString(row.text));
        EXPECT_EQ(written("/model/packages/0/name"), row.expected);
        EXPECT_EQ(written("/lossy"), row.lossy);
    }
    package.setName("");
    package.physicalName = "\xE9"; // is not written and does not count
    EXPECT_EQ(written("/lossy"), "nothing");
    package.addNote(note("\xE9"));
    EXPECT_EQ(written("/lossy"), "true");
}

TEST(JsonWriter, PassesFailuresOn) {
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
            exporter::JsonWriter(output).write(model);
            failed = false;
            EXPECT_EQ(output.text, whole);
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), std::errc::no_space_on_device);
            EXPECT_EQ(output.writes, failAt + 1) << "written to after it failed";
        }
    }
    EXPECT_GT(failAt, 3U) << "the document is written in pieces";
}

} // namespace
