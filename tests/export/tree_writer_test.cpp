#include "export/TreeWriter.h"

#include "MemoryOutput.h"
#include "ModelBuilding.h"
#include "export/exporters.h"
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
#include "host/model/KelTraversalOperation.h"
#include "host/model/KelTypeValue.h"

#include <gtest/gtest.h>

namespace {

std::string outlineOf(const KelModel& model) {
    MemoryOutput output;
    exporter::TreeWriter(output).write(model);
    return output.text;
}

/// A model in which every kind of object occurs.
class Shop {
public:
    Shop() {
        model.setName("Shop");
        addOrigin();
        addTypes();
        logical.stereotype = "layer";
        logical.addNote(note("to be\r\nreviewed\n"));
        addPackage(logical, "Empty");
        addClasses();
        addRelations();
    }

    KelModel model;

private:
    void addOrigin() {
        auto* origin = new KelMetadataOrigin;
        model.addMetadataOrigin(origin);
        origin->sourcePath = "/models/Shop.mdl";
        origin->sourceFormat = "MDL";
        origin->sourceEncoding = "UTF-8";
    }

    void addTypes() {
        integer->dataType = "SQL_INTEGER";
        model.addType(integer);
        auto* money = named<KelDerivedType>("Money");
        model.addType(money);
        money->dataType = "SQL_DECIMAL";
        money->length = 10;
        money->scale = 2;
        money->userDefined = true;
        money->addDerivedFromConcreteType(integer);
        money->addTypeValue(named<KelTypeValue>("none"));
        money->typeValues().first()->setValue("0");
    }

    void addClasses() {
        customer.categoryType = KelClassCategoryType::interface;
        order.stereotype = "entity";
        order.isAbstract = order.isPersistent = true;
        order.multiplicity = "1..n";
        order.addNote(note("central"));
        order.addArgument(named<KelArgument>("T"));
        std::int16_t position = 0;
        for (const char* name : {"pub", "prot", "priv", "impl"}) {
            auto* attribute = named<KelAttribute>(name);
            attribute->visibility = position;
            attribute->position = position++;
            order.addAttribute(attribute);
        }
        KelAttribute& attribute = *order.getAttribute("pub", nullptr);
        attribute.addType(integer);
        attribute.initialValue = "7";
        attribute.isStatic = true;
        auto* total = named<KelOperation>("total");
        order.addOperation(total);
        total->addReturnType(integer);
        total->isVirtual = true;
        for (const char* name : {"a", "b"}) {
            total->addArgument(named<KelArgument>(name));
        }
        total->arguments()[0]->addType(integer);
        total->arguments()[1]->initialValue = "0";
        total->arguments()[1]->addNote(note("optional"));
        addKeys(attribute);
    }

    void addKeys(KelAttribute& attribute) {
        order.addKey(primary);
        primary->addPrimaryOfClass(&order);
        primary->addAttribute(&attribute);
        customer.addKey(foreign);
        foreign->addCandidateKey(primary);
        auto* map = named<KelAssociationRoleNameMap>("id");
        map->addForeignKey(foreign);
        map->addSourceAttribute(&attribute);
    }

    void addRelations() {
        auto& placed = addElement<KelAssociation>(logical, "placed");
        placed.isAggregation = true;
        KelAssociationRole& buyer = addRole(placed, "buyer", &customer);
        buyer.multiplicity = "1";
        buyer.isSource = buyer.isNavigable = true;
        buyer.addForeignKey(foreign);
        KelAssociationRole& other = addRole(placed, "", &order);
        other.isAggregate = true;
        other.containment = 1;
        auto& generalization = addElement<KelGeneralization>(logical, "");
        generalization.visibility = 1;
        generalization.isVirtual = true;
        generalization.addSubtypeClass(&order);
        generalization.addSupertypeClass(&customer);
        addElement<KelRealization>(logical, "r").addRealizationClass(&order);
        auto& dependency = addElement<KelDependency>(logical, "d");
        dependency.addClientClass(&order);
        dependency.addSupplierClass(&customer);
        auto* diagram = named<KelClassDiagram>("Main");
        logical.addDiagram(diagram);
        diagram->addNote(note("drawn"));
        diagram->addModelElement(&placed);
        diagram->addModelElement(&order);
    }

    KelDesignPackage& logical = addPackage(model, "Logical View");
    KelClass& customer = addElement<KelClass>(logical, "Customer");
    KelClass& order = addElement<KelClass>(logical, "Order");
    KelBaseType* integer = named<KelBaseType>("int");
    KelCandidateKey* primary = named<KelCandidateKey>("pk");
    KelForeignKey* foreign = named<KelForeignKey>("fk");
};

TEST(TreeWriter, OutlinesEveryKindOfObject) {
    EXPECT_EQ(outlineOf(Shop().model), R"(model Shop
  origin: /models/Shop.mdl (format MDL, encoding UTF-8)
  package Logical View <<layer>>
    note: to be
      | reviewed
    package Empty
    interface Customer
      foreign key fk -> pk of Order
        role name map id: pub -> ?
    class Order <<entity>> [1..n] (abstract, persistent)
      note: central
      template argument T
      + pub: int = 7 (static)
      # prot
      - priv
      ~ impl
      + total(a: int, b = 0): int (virtual)
        note on argument b: optional
      primary key pk: pub
    association placed: Customer, Order (aggregation)
      role buyer: Customer [1] (source, navigable, foreign key fk)
      role: Order (aggregate, by reference)
    generalization: Order -> Customer (protected, virtual)
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

TEST(TreeWriter, NoTextDrivesTheTerminal) {
    Shop shop;
    struct Renaming final : KelTraversalOperation {
        void post_process(KelObject* object, void* /*userData*/) override {
            object->setName("x\x1B[2J\n\xC2\x9B"
                            "1m\xE9");
            for (const KelField& field : object->getMetaClass().fields()) {
                if (const auto* text = std::get_if<KelString KelObject::*>(&field.member)) {
                    object->*(*text) = "\x1B]0;t\a\r\n\x9B";
                }
            }
        }
    } renaming;
    shop.model.depthTraversal(renaming, nullptr);
    const std::string outline = outlineOf(shop.model);
    EXPECT_NE(outline.find("class x\\x1b[2J\\n\\u{9b}1m\\xe9 "), std::string::npos) << outline;
    for (const char byte : outline) {
        ASSERT_TRUE(byte == '\n' || (byte >= ' ' && byte <= '~')) << outline;
    }
}

TEST(TreeWriter, DepthCostsNeitherStackNorWidth) {
    KelModel model;
    KelPackage* innermost = &model;
    for (int made = 0; made < 100000; ++made) {
        innermost = &addPackage(*innermost, "p");
    }
    const std::string outline = outlineOf(model);
    const std::string last = std::string(40, ' ') + "(depth 100000) package p\n";
    ASSERT_GT(outline.size(), last.size());
    EXPECT_EQ(outline.substr(outline.size() - last.size()), last);
}

TEST(Exporters, AreFoundByFormat) {
    const KelModel model;
    struct Row {
        const char* format;
        const char* start; // of what it writes; null when it is to write nothing
    };
    for (const Row& row : {Row{"json", "{\n"}, Row{"tree", "model \n"}, Row{"none", nullptr}}) {
        const exporter::Exporter* found = exporter::findExporter(row.format);
        ASSERT_NE(found, nullptr) << row.format;
        ASSERT_EQ(found->write != nullptr, row.start != nullptr) << row.format;
        if (row.start != nullptr) {
            MemoryOutput output;
            found->write(model, output);
            EXPECT_EQ(output.text.find(row.start), 0U) << output.text;
        }
    }
    for (const char* unknown : {"", "JSON", "jso", "xml"}) {
        EXPECT_EQ(exporter::findExporter(unknown), nullptr) << unknown;
    }
}

} // namespace
