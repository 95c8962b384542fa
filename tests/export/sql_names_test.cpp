// The names of tables, columns and constraints, and what they depend on.

#include "Shop.h"
#include "export/sql/SchemaNames.h"
#include "source/SourceMap.h"
#include "support/Written.h"

#include <gtest/gtest.h>

#include <array>

namespace {

namespace sql = exporter::sql;

TEST(SqlNames, AreInSnakeCase) {
    const sql::NameStyle snake;
    for (const auto& [text, name] :
         std::initializer_list<std::pair<const char*, const char*>>{{"OrderLine", "order_line"},
                                                                    {"JClass", "j_class"},
                                                                    {"HTMLPage", "html_page"},
                                                                    {"ID", "id"},
                                                                    {"x2Y", "x2_y"},
                                                                    {"pin  no", "pin_no"},
                                                                    {"a::b", "a_b"},
                                                                    {"_x", "_x"},
                                                                    {"ÄrgerÖl", "ärger_öl"},
                                                                    {"订单A", "订单a"},
                                                                    {"", ""},
                                                                    {"a\xFF"
                                                                     "b",
                                                                     "a_b"}}) {
        EXPECT_EQ(sql::styled(text, snake), name) << text;
    }
    EXPECT_EQ(sql::styled("a\"B", {.isSnake = false}), "a_B");
}

/// Two elements of a model whose names clash.
struct Clash {
    const KelObject& first;
    const KelObject& second;
};

/// Classes of which an association leads from one to the other, as their names say.
struct Ends {
    explicit Ends(KelDesignPackage& package, const char* from = "Order", const char* to = "Person")
        : from(addElement<KelClass>(package, from)), to(addElement<KelClass>(package, to)) {}

    KelAssociation& link(KelDesignPackage& package, const char* role, const char* description) {
        KelAssociation& association = addLink(package, "", from, "n", to, "1");
        association.associationRoles()[1]->setName(role);
        association.description = description;
        return association;
    }

    KelClass& from;
    KelClass& to;
};

struct NamesCase {
    const char* of;
    Clash (*add)(KelDesignPackage& package);
    const char* ofFirst; ///< if the first one is the first to be named
    const char* ofSecond;
};

const std::array namesCases{
    NamesCase{"tables",
              [](KelDesignPackage& package) -> Clash {
                  return {addElement<KelClass>(package, "OrderLine"), addElement<KelClass>(package, "Order_Line")};
              },
              "COMMENT ON TABLE order_line_2 IS 'P::Order_Line'", "COMMENT ON TABLE order_line_2 IS 'P::OrderLine'"},
    NamesCase{"columns",
              [](KelDesignPackage& package) -> Clash {
                  auto& one = addElement<KelClass>(package, "One");
                  KelAttribute& first = addAttribute(one, "aB", nullptr);
                  return {first, addAttribute(one, "a b", nullptr)};
              },
              "COMMENT ON COLUMN one.a_b_2 IS 'P::One::a b'", "COMMENT ON COLUMN one.a_b_2 IS 'P::One::aB'"},
    NamesCase{"references",
              [](KelDesignPackage& package) -> Clash {
                  Ends ends(package);
                  addAttribute(ends.from, "ownerId", nullptr); // its name comes before theirs
                  const KelAssociation& first = ends.link(package, "owner", "first");
                  return {first, ends.link(package, "owner", "second")};
              },
              "COMMENT ON COLUMN \"order\".owner_id_3 IS 'second", "COMMENT ON COLUMN \"order\".owner_id_3 IS 'first"},
    NamesCase{"constraints",
              [](KelDesignPackage& package) -> Clash {
                  Ends orders(package);
                  Ends lines(package, "OrderLine", "Place");
                  orders.link(package, "line_at", "");
                  lines.link(package, "at", "");
                  return {orders.from, lines.from};
              },
              "ALTER TABLE order_line ADD CONSTRAINT fk_order_line_at_2 FOREIGN KEY (at_id)",
              "ALTER TABLE \"order\" ADD CONSTRAINT fk_order_line_at_2 FOREIGN KEY (line_at_id)"},
};

TEST(SqlNames, FollowIdsWhichAreFoundOnlyIfNamesClash) {
    const exporter::Exporter& exporter = *exporter::findExporter("sql");
    const exporter::OptionValues options(exporter.options, {});
    int searches = 0;
    const auto scriptOf = [&](const KelModel& model, const source::SourceMap& quids) {
        MemoryOutput script;
        FolderOfOne folder(script);
        exporter::Omissions omissions;
        exporter.write({.model = model,
                        .findSource =
                            [&] {
                                ++searches;
                                return &quids;
                            },
                        .options = options,
                        .folder = folder,
                        .omissions = omissions});
        return script.text;
    };
    for (const NamesCase& row : namesCases) {
        for (const bool isFirst : {true, false}) {
            KelModel model;
            const Clash clash = row.add(addPackage(model, "P"));
            Ends others(addPackage(model, "Q"), "Ship", "Sea"); // nothing of them clashes
            source::SourceMap quids;
            quids.add(clash.first, {.begin = {}, .quid = isFirst ? "1" : "2"});
            quids.add(clash.second, {.begin = {}, .quid = isFirst ? "2" : "1"});
            searches = 0;
            const std::string script = scriptOf(model, quids);
            EXPECT_NE(script.find(isFirst ? row.ofFirst : row.ofSecond), std::string::npos) << row.of << script;
            EXPECT_EQ(searches, 1) << row.of;
        }
    }
    const Shop shop;
    searches = 0;
    EXPECT_NE(scriptOf(shop.model, {}).find("CREATE TABLE"), std::string::npos);
    EXPECT_EQ(searches, 0);
}

} // namespace
