#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/Shop.h"
#include "export/relationships.h"

#include <gtest/gtest.h>

namespace {

using exporter::Aggregation;
using exporter::ClassKind;

TEST(ClassKinds, TheStereotypeDecidesThenTheCategory) {
    KelClass one;
    one.categoryType = KelClassCategoryType::interface;
    const exporter::ClassKinds plain;
    const exporter::ClassKinds more({{"Table ", "datatype"}, {"table", "class"}, {"enum", "interface"}});
    const auto kinds = [&](const char* stereotype) {
        one.stereotype = stereotype;
        return std::pair(plain.kindOf(one), more.kindOf(one));
    };
    EXPECT_EQ(kinds(""), std::pair(ClassKind::interface, ClassKind::interface));
    EXPECT_EQ(kinds(" EnumeraTion\n"), std::pair(ClassKind::enumeration, ClassKind::enumeration));
    EXPECT_EQ(kinds("Business Actor"), std::pair(ClassKind::actor, ClassKind::actor));
    EXPECT_EQ(kinds("enum"), std::pair(ClassKind::enumeration, ClassKind::interface));
    EXPECT_EQ(kinds("TABLE"), std::pair(ClassKind::interface, ClassKind::classObject));
    one.categoryType = KelClassCategoryType::metaclass;
    EXPECT_EQ(kinds("entity").first, ClassKind::classObject);
}

TEST(ClassNames, AreQualifiedNamesThenTheirEndsThenSimpleNames) {
    KelModel model;
    KelDesignPackage& logical = addPackage(model, "Logical View");
    KelDesignPackage& sales = addPackage(logical, "Sales");
    KelDesignPackage& wholesale = addPackage(logical, "Wholesales");
    const KelClass& order = addElement<KelClass>(sales, "Order");
    addElement<KelClass>(wholesale, "Order");
    const KelClass& line = addElement<KelClass>(sales, "Line");
    const KelClass& odd = addElement<KelClass>(wholesale, "a::b");
    addElement<KelClass>(wholesale, "");
    const exporter::ClassNames names(model);
    EXPECT_EQ(names.find("Logical View::Sales::Order"), &order);
    EXPECT_EQ(names.find("Sales::Order"), &order);
    EXPECT_EQ(names.find("ales::Order"), nullptr) << "ends between two names";
    EXPECT_EQ(names.find("Order"), nullptr) << "there are two";
    EXPECT_EQ(names.find("Line"), &line);
    EXPECT_EQ(names.find("line"), nullptr);
    EXPECT_EQ(names.find("a::b"), &odd);
    EXPECT_EQ(names.find("::Line"), nullptr);
    EXPECT_EQ(names.find(""), nullptr) << "not the class without a name";
    EXPECT_EQ(names.find(static_cast<const KelType*>(nullptr)), nullptr);
    EXPECT_EQ(names.named("Order").size(), 2U);
    addElement<KelClass>(wholesale, "a::b");
    addPackage(addPackage(logical, "Old"), "Sales").addModelElement(named<KelClass>("Order"));
    const exporter::ClassNames later(model);
    EXPECT_EQ(later.find("Sales::Order"), nullptr) << "ends two qualified names";
    EXPECT_EQ(later.find("a::b"), nullptr);
}

TEST(Associations, TheWholeIsTheFlaggedRoleElseTheFirstOfTwo) {
    const auto aggregations = [](bool isAggregation, int flagged, int byValue, int roles = 2) {
        KelAssociation association;
        association.isAggregation = isAggregation;
        for (int index = 0; index < roles; ++index) {
            KelAssociationRole& role = addRole(association, "", nullptr);
            role.isAggregate = index == flagged;
            role.containment = index == byValue ? 0 : 1;
        }
        return std::pair(exporter::aggregationOf(association, 0), exporter::aggregationOf(association, 1));
    };
    using enum Aggregation;
    EXPECT_EQ(aggregations(true, 1, 0), std::pair(composite, none));
    EXPECT_EQ(aggregations(true, 1, 1), std::pair(shared, none));
    EXPECT_EQ(aggregations(true, -1, 1), std::pair(none, composite));
    EXPECT_EQ(aggregations(true, -1, 1, 3), std::pair(none, none));
    EXPECT_EQ(aggregations(false, -1, 1), std::pair(none, none)) << "by value without a whole";
}

TEST(Multiplicities, AreRangesOrListsOrNothing) {
    const auto read = [](const char* text) {
        const std::optional<exporter::Bounds> bounds = exporter::boundsOf(text);
        return !bounds ? std::string("-")
                       : std::to_string(bounds->lower) + (bounds->upper ? " " + std::to_string(*bounds->upper) : " *") +
                             (bounds->isExact ? "" : " list");
    };
    EXPECT_EQ(read("1"), "1 1");
    EXPECT_EQ(read("n"), "0 *");
    EXPECT_EQ(read("*"), "0 *");
    EXPECT_EQ(read("1..N"), "1 *");
    EXPECT_EQ(read(" 2 .. 5 "), "2 5");
    EXPECT_EQ(read("1,3..5"), "1 5 list");
    EXPECT_EQ(read("1,7..n"), "1 * list");
    for (const char* none :
         {"", " ", "many", "n..1", "5..2", "1..", "..1", "1,", "-1", "1.5", "2147483648", "1..n..n"}) {
        EXPECT_EQ(read(none), "-") << none;
    }
    EXPECT_EQ(read("0..2147483647"), "0 2147483647");
}

} // namespace
