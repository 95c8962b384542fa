#include "Shop.h"
#include "export/ElementIds.h"
#include "export/modelWalk.h"
#include "export/words.h"
#include "source/SourceMap.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using exporter::ElementIds;
using exporter::qualifiedName;

/// A line with kind, qualified name and id for each element of a model.
struct IdLines final : exporter::ModelVisitor {
    explicit IdLines(const KelModel& model, ElementIds::Find find = ElementIds::Find::byAddress)
        : ids(model, nullptr, ElementIds::Of::all, find) {
        walkModel(model, exporter::documentParts, *this);
    }
    void enter(const KelObject& element) override {
        text += exporter::kindWord(element.elementType);
        text += " " + qualifiedName(element) + " " + ids.idOf(element) + "\n";
    }

    ElementIds ids;
    std::string text;
};

// The hashes were made by another program.
TEST(ElementIds, HashKindAndQualifiedName) {
    const Shop shop;
    const std::string lines = IdLines(shop.model).text;
    for (const char* line :
         {"model Shop na91b562feb6d4e16\n", "type Money nbe05d5da044b6cf3\n",
          "package Logical View::Empty ndf5e3cee09fd8e03\n", "key Logical View::Customer::fk nc776f7acc7ef9616\n",
          "argument Logical View::Order::T n2d6d88db3d30a9cb\n", "attribute Logical View::Order::a n48d573b140060c3b\n",
          "argument Logical View::Order::total::b n4cb0de57e4fb629b\n",
          "role Logical View::placed:: n8554fde13e468c80\n", "generalization Logical View:: nbd1499fed3e046be\n",
          "realization Logical View::r n833728492ca40446\n", "diagram Logical View::Main n9caa4875998fcbcf\n"}) {
        EXPECT_NE(lines.find(line), std::string::npos) << line << lines;
    }
    EXPECT_EQ(std::ranges::count(lines, '\n'), 25);
    EXPECT_EQ(ElementIds(shop.model, nullptr).idOf(KelNote()), "");
    const IdLines byNumber(shop.model, ElementIds::Find::byNumber);
    EXPECT_EQ(byNumber.text, lines);
    EXPECT_EQ(byNumber.ids.idOf(KelNote()), "");
}

/// A package P with a class A whose quid is known, an attribute in it, and a class B.
class LastingIds : public testing::Test {
protected:
    LastingIds() {
        a.addAttribute(inA);
        known.add(a, {.file = 0, .begin = {}, .end = 0, .quid = "3C5A00F1"});
    }

    std::string idOf(const KelObject& element) const { return ElementIds(model, &known).idOf(element); }
    /// The id of an element of P that has no quid and whose name no other has.
    template <class T>
    static std::string idByName(const char* name) {
        KelModel other;
        const T& element = addElement<T>(addPackage(other, "P"), name);
        return ElementIds(other, nullptr).idOf(element);
    }

    KelModel model;
    KelDesignPackage& package = addPackage(model, "P");
    KelClass& a = addElement<KelClass>(package, "A");
    KelClass& b = addElement<KelClass>(package, "B");
    KelAttribute* inA = named<KelAttribute>("x");
    source::SourceMap known;
};

TEST_F(LastingIds, AQuidOutlastsRenamingAndMovingAndANameDoesNot) {
    const std::string ofB = idOf(b);
    const std::string ofAttribute = idOf(*inA);
    addElement<KelClass>(package, "New");
    inA->initialValue = "1";
    EXPECT_EQ(idOf(*inA), ofAttribute);
    a.setName("Renamed");
    package.setName("Q");
    EXPECT_EQ(idOf(a), "q3c5a00f1");
    EXPECT_NE(idOf(*inA), ofAttribute); // its owners have other names
    EXPECT_NE(idOf(b), ofB);
}

TEST_F(LastingIds, AQuidOfTwoElementsOrOfOddCharactersIsNone) {
    known.add(b, {.file = 0, .begin = {}, .end = 0, .quid = "3c5A00f1"});
    EXPECT_EQ(idOf(a), idByName<KelClass>("A"));
    EXPECT_EQ(idOf(b), idByName<KelClass>("B"));
    for (const char* quid : {"", "a b", "a\"", "a#2", "caf\xC3\xA9"}) {
        source::SourceMap odd;
        odd.add(a, {.file = 0, .begin = {}, .end = 0, .quid = quid});
        EXPECT_EQ(ElementIds(model, &odd).idOf(a), idByName<KelClass>("A")) << quid;
    }
}

TEST_F(LastingIds, ThoseOfOneNameAreNumberedAmongThoseWithoutAQuid) {
    const KelClass& second = addElement<KelClass>(package, "B");
    const KelClass& withNumber = addElement<KelClass>(package, "B#3");
    const KelClass& third = addElement<KelClass>(package, "B");
    const KelClass& sameAsA = addElement<KelClass>(package, "A"); // A itself has the id of its quid
    const KelAssociation& otherKind = addElement<KelAssociation>(package, "B");
    EXPECT_EQ(idOf(b), idByName<KelClass>("B"));
    EXPECT_EQ(idOf(second), idByName<KelClass>("B#2"));
    EXPECT_EQ(idOf(withNumber), idByName<KelClass>("B#3"));
    EXPECT_EQ(idOf(third), idByName<KelClass>("B#4")); // a name has the other number
    EXPECT_EQ(idOf(sameAsA), idByName<KelClass>("A"));
    EXPECT_EQ(idOf(otherKind), idByName<KelAssociation>("B"));

    known.add(b, {.file = 0, .begin = {}, .end = 0, .quid = "1"}); // then the others move up
    EXPECT_EQ(idOf(second), idByName<KelClass>("B"));
    EXPECT_EQ(idOf(third), idByName<KelClass>("B#2"));
}

// Names are hashed as outputs show them, and a level of nesting costs its own name alone.
TEST(ElementIds, DeepNamesAreThoseOfTheWholePath) {
    constexpr int depth = 50000;
    KelModel deep;
    KelPackage* innermost = &deep;
    std::string path;
    for (int made = 0; made < depth; ++made) {
        innermost = &addPackage(*innermost, "p\xE9");
        path += (made > 0 ? "::p" : "p") + std::string("\xEF\xBF\xBD");
        addElement<KelClass>(static_cast<KelDesignPackage&>(*innermost), "C");
    }
    const KelObject& deepest = *static_cast<KelDesignPackage*>(innermost)->modelElements().first();
    EXPECT_EQ(qualifiedName(deepest), path + "::C");
    KelModel flat;
    const KelClass& same = addElement<KelClass>(addPackage(flat, path.c_str()), "C");
    EXPECT_EQ(ElementIds(deep, nullptr).idOf(deepest), ElementIds(flat, nullptr).idOf(same));
}

} // namespace
