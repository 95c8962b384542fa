#include "builder/Quids.h"

#include "host/model/KelAssociation.h"

#include <gtest/gtest.h>

namespace {

TEST(QuidTree, OrdersByQuidAndElseByName) {
    struct Row {
        const char* leftName;
        const char* leftQuid; // null: none
        const char* rightName;
        const char* rightQuid;
        int order;
    };
    constexpr Row rows[] = {
        {"b", "1", "a", "2", -1},        {"a", "2", "b", "10", 1},    {"a", "2", "b", "2", 0},
        {"", "A", "", "a", -1},          {"b", "1", "a", nullptr, 1}, {"a", nullptr, "b", "1", -1},
        {"a", nullptr, "a", nullptr, 0},
    };
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    const rose::QuidTree tree;
    for (const Row& row : rows) {
        KelString leftQuid(row.leftQuid);
        KelString rightQuid(row.rightQuid);
        KelAssociation left;
        KelAssociation right;
        left.setName(row.leftName);
        right.setName(row.rightName);
        left.generalPointer = row.leftQuid != nullptr ? &leftQuid : nullptr;
        right.generalPointer = row.rightQuid != nullptr ? &rightQuid : nullptr;
        const KelString key(row.rightQuid != nullptr ? row.rightQuid : row.rightName);
        const auto index = &row - rows;
        EXPECT_EQ(sign(tree.compare2Object(&left, &right)), row.order) << index;
        EXPECT_EQ(sign(tree.compare2Object(&right, &left)), -row.order) << index;
        EXPECT_EQ(tree.compare2Key(&right, &key), 0) << index;
        const KelString greater = key + "~";
        EXPECT_LT(tree.compare2Key(&right, &greater), 0) << index;
    }
}

} // namespace
