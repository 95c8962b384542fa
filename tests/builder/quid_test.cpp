#include "builder/AssociationViews.h"
#include "builder/Associations.h"
#include "builder/BuilderSession.h"
#include "builder/ClassDiagrams.h"
#include "builder/Classes.h"
#include "builder/QuidTree.h"
#include "builder/Quids.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelNote.h"

#include <memory>

namespace rose {

namespace {

std::string_view quidOf(const KelAssociation& association) {
    return association.generalPointer != nullptr ? static_cast<const KelString*>(association.generalPointer)->view()
                                                 : "none";
}

class QuidSession : public BuilderSession {
protected:
    void SetUp() override { call(CreateClassDiagram, "first"); }

    /// Shows an association that has not been read on the current diagram.
    KelAssociation& park(const char* quid) {
        call(CreateAssociationInView, "in view");
        call(ConnectAssociationToDiagram, quid);
        return *aAssociation;
    }
};

TEST_F(QuidSession, AnAssociationKeepsItsFirstQuid) {
    call(CreateAssociation, "a");
    EXPECT_EQ(quidOf(*aAssociation), "none");
    call(SetQuid, "41");
    call(SetQuid, "42");
    EXPECT_EQ(quidOf(*aAssociation), "41");
    const KelAssociation& first = *aAssociation;
    call(CreateAssociation, "b");
    call(SetQuid, "");
    EXPECT_EQ(quidOf(*aAssociation), "");
    call(SetQuid, "43");
    EXPECT_EQ(quidOf(*aAssociation), "");
    EXPECT_EQ(quidOf(first), "41");
}

TEST_F(QuidSession, OtherObjectsHaveNone) {
    const KelAssociation& placeholder = park("41");
    call(CreateAssociation, "a");
    call(CreateAssociationRole, "r");
    call(CreateClass, "A", KelClassCategoryType::classObject);
    for (KelModelObject* object :
         {static_cast<KelModelObject*>(aPackage), static_cast<KelModelObject*>(aDiagram),
          static_cast<KelModelObject*>(aClass), static_cast<KelModelObject*>(aAssociationRole)}) {
        activeObject = object;
        call(SetQuid, "41");
        EXPECT_EQ(object->generalPointer, nullptr);
    }
    activeObject = nullptr;
    call(SetQuid, "41");
    EXPECT_EQ(toBeAssociations.getCount(), 1);
    EXPECT_EQ(quidOf(placeholder), "41");
}

TEST_F(QuidSession, AnAssociationTakesOverWhatItsPlaceholderGathered) {
    KelAssociation& placeholder = park("41");
    placeholder.toolId = 7;
    for (const char* text : {"one", "two"}) {
        auto note = std::make_unique<KelNote>();
        note->description = text;
        ASSERT_TRUE(placeholder.addNote(note.release()));
    }
    call(CreateClassDiagram, "second");
    EXPECT_EQ(&park("41"), &placeholder);
    placeholder.toolId = 7;
    const KelAssociation& other = park("4");

    call(CreateAssociation, "a");
    call(SetQuid, "41");
    EXPECT_EQ(toBeAssociations.getCount(), 1);
    EXPECT_EQ(toBeAssociations[0], &other);
    EXPECT_EQ(aAssociation->toolId, 7);
    ASSERT_EQ(aAssociation->diagrams().count(), 2);
    EXPECT_EQ(aAssociation->diagrams()[0]->getName(), "first");
    EXPECT_EQ(aAssociation->diagrams()[1]->getName(), "second");
    ASSERT_EQ(aAssociation->notes().count(), 2);
    EXPECT_EQ(aAssociation->notes()[0]->description, "one");
    EXPECT_EQ(aAssociation->notes()[1]->description, "two");
    EXPECT_EQ(aDiagram->modelElements().count(), 2) << "the other placeholder and the association itself";
    EXPECT_EQ(aDiagram->modelElements()[0], &other);
    EXPECT_EQ(aDiagram->modelElements()[1], aAssociation);
}

TEST_F(QuidSession, AViewNumberOfItsOwnStays) {
    park("41").toolId = 7;
    call(CreateAssociation, "a");
    aAssociation->toolId = 3;
    call(SetQuid, "41");
    EXPECT_EQ(aAssociation->toolId, 3);
    EXPECT_EQ(toBeAssociations.getCount(), 0);
    EXPECT_EQ(aDiagram->modelElements().count(), 1);
}

TEST_F(QuidSession, AViewNumberGoesWhereTheScanIs) {
    enum class Goes { nowhere, toNote, toActiveObject, toNextAssociation };
    struct Row {
        bool inCompartment;
        bool inNoteView;
        bool hasActiveObject;
        Goes goes;
    };
    constexpr Row rows[] = {
        {true, true, true, Goes::nowhere},          {true, false, false, Goes::nowhere},
        {false, true, true, Goes::toNote},          {false, true, false, Goes::toNote},
        {false, false, true, Goes::toActiveObject}, {false, false, false, Goes::toNextAssociation},
    };
    call(CreateClass, "A", KelClassCategoryType::classObject);
    for (const Row& row : rows) {
        InCompartment = row.inCompartment;
        InNoteView = row.inNoteView;
        activeObject = row.hasActiveObject ? aClass : nullptr;
        currentNoteId.viewId = aClass->toolId = physicalId = 1;
        call(CreateToolID, "5\t");
        const auto index = &row - rows;
        EXPECT_EQ(currentNoteId.viewId, row.goes == Goes::toNote ? 5 : 1) << index;
        EXPECT_EQ(aClass->toolId, row.goes == Goes::toActiveObject ? 5 : 1) << index;
        EXPECT_EQ(physicalId, row.goes == Goes::toNextAssociation ? 5 : 1) << index;
        EXPECT_FALSE(InCompartment) << index;
        EXPECT_EQ(InNoteView, row.inNoteView) << index;
    }
}

TEST_F(QuidSession, AViewNumberIsReadAsANumber) {
    struct Row {
        const char* text;
        int number;
    };
    constexpr Row rows[] = {
        {"12\t", 12}, {"  12", 12}, {"-12x", -12},     {"x12", 0},
        {"", 0},      {"\t", 0},    {"4294967299", 3}, {"99999999999999999999", -1},
    };
    activeObject = nullptr;
    for (const Row& row : rows) {
        physicalId = 9;
        call(CreateToolID, row.text);
        EXPECT_EQ(physicalId, row.number) << row.text;
    }
}

TEST(QuidTreeTest, OrdersByQuidAndElseByName) {
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
    const QuidTree tree;
    for (const Row& row : rows) {
        KelString leftQuid(row.leftQuid);
        KelString rightQuid(row.rightQuid);
        KelAssociation left;
        KelAssociation right;
        left.setName(row.leftName);
        right.setName(row.rightName);
        left.generalPointer = row.leftQuid != nullptr ? &leftQuid : nullptr;
        right.generalPointer = row.rightQuid != nullptr ? &rightQuid : nullptr;
        const auto index = &row - rows;
        EXPECT_EQ(sign(tree.compare2Object(&left, &right)), row.order) << index;
        EXPECT_EQ(sign(tree.compare2Object(&right, &left)), -row.order) << index;
        const KelString key(row.leftQuid != nullptr ? row.leftQuid : row.leftName);
        EXPECT_EQ(tree.compare2Key(&left, &key), 0) << index;
        const KelString greater = key + "~";
        EXPECT_LT(tree.compare2Key(&left, &greater), 0) << index;
    }
}

} // namespace

} // namespace rose
