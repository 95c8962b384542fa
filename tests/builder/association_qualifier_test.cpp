// Qualifiers: the keys and attributes that they make at both ends of an association.

#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelModelElement.h"
#include "support/LogicalView.h"

#include <gtest/gtest.h>

namespace {

constexpr LogicalViewRow qualifiers[] = {
    {"on the first role: the foreign key waits for the second role's class", R"(
(object Class "Bank")
(object Class "Product")
object ClassAttribute "b" type "int"
 (object Association "a")
  (object Role "bank" supplier "Bank" keys (list (object ClassAttribute "a" type "long")
(object ClassAttribute "b" type "char"))
  (object Role "product" supplier "Product")
)",
     R"(
package Logical View
  class Bank
    - a: long
    - b: char
    primary key a: a, b
  class Product
    - b: int
    - a: long
    foreign key: a, b -> a of Bank
  association a: Bank, Product
    role bank: Bank (source)
    role product: Product (foreign key a, b)
)"},
    {"an attribute of that name in either class is taken as it is, a copy has the visibility of the other", R"(
(object Class "Bank")
object ClassAttribute "number" type "int" exportControl "Public"
(object Class "Account")
object ClassAttribute "number" type "short"
object ClassAttribute "branch" exportControl "Protected"
 (object Association "a")
  (object Role "bank" supplier "Bank")
  (object Role "account" supplier "Account" keys (list (object ClassAttribute "number"
(object ClassAttribute "branch" type "int"
)",
     R"(
package Logical View
  class Bank
    + number: int
    # branch: int
    foreign key: branch, number -> number of Account
  class Account
    - number: short
    # branch: int
    primary key number: branch, number
  association a: Bank, Account
    role bank: Bank (source, foreign key branch, number)
    role account: Account
)"},
    {"a class keeps the primary key it has; a foreign key is made for each association", R"(
(object Class "Bank")
(object Class "Account")
 (object Association "a")
  (object Role "" supplier "Bank")
  (object Role "" supplier "Account" keys (list (object ClassAttribute "x")
 (object Association "b")
  (object Role "" supplier "Bank")
  (object Role "" supplier "Account" keys (list (object ClassAttribute "y")
)",
     R"(
package Logical View
  class Bank
    - x: int
    - y: int
    foreign key: x -> x of Account
    foreign key: y -> x of Account
  class Account
    - x: int
    - y: int
    primary key x: x, y
  association a: Bank, Account
    role: Bank (source, foreign key x)
    role: Account
  association b: Bank, Account
    role: Bank (source, foreign key y)
    role: Account
)"},
    {"both roles may be qualified, each for a key of its own class", R"(
(object Class "A")
(object Class "B")
 (object Association "a")
  (object Role "a" supplier "A" keys (list (object ClassAttribute "x")
  (object Role "b" supplier "B" keys (list (object ClassAttribute "y")
)",
     R"(
package Logical View
  class A
    - x: int
    - y: int
    primary key x: x
    foreign key: y -> y of B
  class B
    - x: int
    - y: int
    foreign key: x -> x of A
    primary key y: y
  association a: A, B
    role a: A (source, foreign key y)
    role b: B (foreign key x)
)"},
    {"both ends may be the same class: the attribute joined the primary key first, so it is split", R"(
(object Class "Part")
 (object Association "a")
  (object Role "whole" supplier "Part")
  (object Role "part" supplier "Part" keys (list (object ClassAttribute "n"
)",
     R"(
package Logical View
  class Part
    - n: int
    - n/1: int
    primary key n: n
    foreign key: n/1 -> n of Part
      role name map n: n -> n/1
  association a: Part, Part
    role whole: Part (source, foreign key n/1)
    role part: Part
)"},
    {"a qualifier of a role without a class is nothing, a foreign key that still waits at the next one is nobody's", R"(
(object Class "A")
 (object Association "a")
  (object Role "r" keys (list (object ClassAttribute "lost")
  (object Role "s" supplier "A")
(object Class "B"
object ClassAttribute "kept"
 (object Association "b")
  (object Role "" supplier "A" keys (list (object ClassAttribute "k")
 (object Association "c")
  (object Role "" supplier "A")
  (object Role "" supplier "B")
)",
     R"(
package Logical View
  class A
    - k: int
    primary key k: k
  class B
    - kept: int
  association c: A, B
    role: A (source)
    role: B
)"},
};

TEST(Qualifiers, MakeKeysAtBothEnds) {
    expectPackages(qualifiers);
}

TEST(Qualifiers, TakePlacesBehindTheAttributesOfTheirClasses) {
    ImportedModel imported = importLogicalView(R"(
(object Class "Bank")
object ClassAttribute "z"
(object Class "Product")
object ClassAttribute "y"
object ClassAttribute "b"
 (object Association "a")
  (object Role "bank" supplier "Bank" keys (list (object ClassAttribute "a")
(object ClassAttribute "b")
(object ClassAttribute "c"))
  (object Role "product" supplier "Product")
)");
    std::string places;
    for (const KelModelElement* element :
         static_cast<KelDesignPackage&>(*imported.model.childPackages()[0]).modelElements()) {
        if (element->elementType == KelElementType::classObject) {
            for (const KelAttribute* attribute : static_cast<const KelClass*>(element)->attributes()) {
                places += attribute->getName().text() + std::to_string(attribute->position) + " ";
            }
        }
    }
    // The waiting ones move from the last to the first.
    EXPECT_EQ(places, "a1 b2 c3 z0 a3 b1 c2 y0 ");
}

} // namespace
