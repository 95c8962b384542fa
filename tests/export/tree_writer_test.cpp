#include "export/exporters.h"

#include "Shop.h"
#include "host/model/KelTraversalOperation.h"
#include "support/Written.h"

#include <gtest/gtest.h>

namespace {

std::string outlineOf(const KelModel& model) {
    return writtenAs("tree", model);
}

TEST(TreeWriter, OutlinesEveryKindOfObject) {
    EXPECT_EQ(outlineOf(Shop().model), R"(model Shop
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
            EXPECT_NE(std::ranges::find(values, option.byDefault), values.end()) << option.name;
        }
    }
    EXPECT_EQ(exporter::findExporterByEnding("M.JSON"), exporter::findExporter("json"));
    for (const char* unknown : {"", "JSON", "jso", "xml"}) {
        EXPECT_EQ(exporter::findExporter(unknown), nullptr) << unknown;
    }
    for (const char* unknown : {"", "json", ".json", "m.json/x", "m.json~", "m."}) {
        EXPECT_EQ(exporter::findExporterByEnding(unknown), nullptr) << unknown;
    }
}

TEST(Exporters, OptionsTakeOnlyWhatTheTableSays) {
    constexpr std::array options{exporter::Option{"colour", "red|green|blue", "green", ""},
                                 exporter::Option{"wide", "true|false", "false", ""}};
    using Settings = std::vector<std::string>;
    const auto read = [&](const Settings& settings) {
        const exporter::OptionValues values(options, settings);
        return std::string(values.get("colour")) + (values.isOn("wide") ? " wide" : "");
    };
    EXPECT_EQ(read({}), "green");
    EXPECT_EQ(read({"wide=true", "colour=red", "colour=blue"}), "blue wide");
    struct Row {
        const char* setting;
        const char* text;
    };
    for (const Row& row : {
             Row{"width=1", "there is no option 'width'; the options are colour=red|green|blue, wide=true|false"},
             Row{"=red", "there is no option ''; the options are colour=red|green|blue, wide=true|false"},
             Row{"wide", "'wide' is not NAME=VALUE; the options are colour=red|green|blue, wide=true|false"},
             Row{"colour=", "'colour=' is none of colour=red|green|blue"},
             Row{"colour=red|green", "'colour=red|green' is none of colour=red|green|blue"},
             Row{"wide=True", "'wide=True' is none of wide=true|false"},
         }) {
        try {
            read({row.setting});
            ADD_FAILURE() << row.setting << " is taken";
        } catch (const exporter::WrongOption& error) {
            EXPECT_STREQ(error.what(), row.text);
        }
    }
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
