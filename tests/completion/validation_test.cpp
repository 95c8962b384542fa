// What validation repairs and removes.

#include "completion/ValidateModel.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "support/LogicalView.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

constexpr LogicalViewRow elements[] = {
    {"a generalization without both ends goes, the element behind it is looked at", R"(
(object Class "A")
(object Class "B")
(object Inheritance_Relationship
(object Inheritance_Relationship
  supplier "Undefined")
(object Inheritance_Relationship
  supplier "A")
(object Class "E") (value Text "{X,Y}")
(object Inheritance_Relationship
  supplier "A")
)",
     R"(
package Logical View
  class A
  class B
  generalization: B -> A
package Use Case Classes in Class Diagrams
  class Undefined
)"},
    {"an association without two roles that have a class goes, as do its views", R"(
(object Class "A")
 (object Association "none")
 (object Association "one") quid "1"
  (object Role "r" supplier "A")
 (object Association "without a class") quid "2"
  (object Role "r" supplier "A")
  (object Role "s")
 (object Association "whole")
  (object Role "r" supplier "A")
  (object Role "s" supplier "A")
(object ClassDiagram "D")
(object AssociationViewNew "v" @1 quidu "1"
(object AssociationViewNew "v" @2 quidu "2"
)",
     R"(
package Logical View
  class A
  association whole: A, A
    role r: A (source)
    role s: A
  diagram D
)"},
    {"its qualifiers and keys go with it, but not what other qualifiers share", R"(
(object Class "A")
(object Class "B")
object ClassAttribute "own"
(object Class "Keyless")
 (object Association "kept")
  (object Role "r" supplier "A")
  (object Role "s" supplier "B" keys (list (object ClassAttribute "k")
 (object Association "removed")
  (object Role "r" supplier "A")
  (object Role "s" supplier "B" keys (list (object ClassAttribute "l")
  (object Role "without a class")
 (object Association "removed")
  (object Role "r" supplier "A")
  (object Role "s" supplier "Keyless" keys (list (object ClassAttribute "m")
  (object Role "without a class")
)",
     R"(
package Logical View
  class A
    - k: int
    foreign key: k -> k of B
  class B
    - own: int
    - k: int
    primary key k: k
  class Keyless
  association kept: A, B
    role r: A (source, foreign key k)
    role s: B
)"},
    {"the foreign keys of an aggregation make up a key of their class, or join the primary key that it has", R"(
(object Class "Whole")
(object Class "Part")
(object Class "Plain")
 (object Association "first")
  (object Role "part" supplier "Part")
  (object Role "whole" supplier "Whole" keys (list (object ClassAttribute "w")
 (object Association "a")
  (object Role "whole" supplier "Whole")
  (object Role "part" supplier "Part" keys (list (object ClassAttribute "k") is_aggregate TRUE
 (object Association "b")
  (object Role "plain" supplier "Plain")
  (object Role "part" supplier "Part" keys (list (object ClassAttribute "k") is_aggregate TRUE
)",
     R"(
package Logical View
  class Whole
    - w: int
    - k: int
    primary key w: k, w
    foreign key: k -> k of Part
  class Part
    - w: int
    - k: int
    foreign key: w -> w of Whole
    primary key k: k
  class Plain
    - k: int
    foreign key: k -> k of Part
  association first: Part, Whole
    role part: Part (source, foreign key w)
    role whole: Whole
  association a: Whole, Part (aggregation)
    role whole: Whole (source, foreign key k)
    role part: Part (aggregate)
  association b: Plain, Part (aggregation)
    role plain: Plain (source, foreign key k)
    role part: Part (aggregate)
)"},
    {"an attribute of a class without keys may be in the foreign key of another class: it gets a primary key", R"(
(object Class "Part")
(object Class "Whole")
(object Class "Third")
object ClassAttribute "k" exportControl "Public"
 (object Association "a")
  (object Role "part" supplier "Part")
  (object Role "whole" supplier "Whole" keys (list (object ClassAttribute "k")
  (object Role "third" supplier "Third" is_aggregate TRUE
)",
     R"(
package Logical View
  class Part
    foreign key: k -> k of Whole
  class Whole
    - k: int
    primary key k: k
  class Third
    + k: int
    primary key: k
  association a: Part, Whole, Third (aggregation)
    role part: Part (source, foreign key k)
    role whole: Whole
    role third: Third (aggregate, foreign key k)
)"},
};

TEST(Validation, RepairsAndRemovesElements) {
    expectPackages(elements);
}

constexpr LogicalViewRow shared[] = {
    {"a key that it joined later gets a copy; a candidate key gets no role name map", R"(
(object Class "P")
(object Class "Q")
 (object Association "key of P")
  (object Role "q" supplier "Q")
  (object Role "p" supplier "P" keys (list (object ClassAttribute "k")
 (object Association "k refers to Q")
  (object Role "p" supplier "P")
  (object Role "q" supplier "Q" keys (list (object ClassAttribute "k")
)",
     R"(
package Logical View
  class P
    - k: int
    - k/1: int
    primary key k: k
    foreign key: k/1 -> k of Q
      role name map k: k -> k/1
  class Q
    - k: int
    - k/1: int
    foreign key: k -> k of P
    primary key k: k/1
  association key of P: Q, P
    role q: Q (source, foreign key k)
    role p: P
  association k refers to Q: P, Q
    role p: P (source, foreign key k/1)
    role q: Q
)"},
    {"one that joined a foreign key first and the class key then stays shared", R"(
(object Class "P")
(object Class "Q")
 (object Association "key of P")
  (object Role "q" supplier "Q")
  (object Role "p" supplier "P" keys (list (object ClassAttribute "a")
 (object Association "k refers to Q")
  (object Role "p" supplier "P")
  (object Role "q" supplier "Q" keys (list (object ClassAttribute "k")
 (object Association "k joins the key of P")
  (object Role "p" supplier "P" keys (list (object ClassAttribute "k")
)",
     R"(
package Logical View
  class P
    - a: int
    - k: int
    primary key a: a, k
    foreign key: k -> k of Q
  class Q
    - a: int
    - k: int
    foreign key: a -> a of P
    primary key k: k
  association key of P: Q, P
    role q: Q (source, foreign key a)
    role p: P
  association k refers to Q: P, Q
    role p: P (source, foreign key k)
    role q: Q
)"},
    {"in three foreign keys: a copy for each further one, behind the largest number there is", R"(
(object Class "C")
object ClassAttribute "k" type "long" exportControl "Public"
object ClassAttribute "k/7th"
object ClassAttribute "k/x"
object ClassAttribute "kk"
object ClassAttribute "l/99"
(object Class "P")
(object Class "Q")
(object Class "R")
 (object Association "a")
  (object Role "c" supplier "C")
  (object Role "p" supplier "P" keys (list (object ClassAttribute "k")
 (object Association "b")
  (object Role "c" supplier "C")
  (object Role "q" supplier "Q" keys (list (object ClassAttribute "k")
 (object Association "c")
  (object Role "c" supplier "C")
  (object Role "r" supplier "R" keys (list (object ClassAttribute "k")
)",
     R"(
package Logical View
  class C
    + k: long
    - k/7th: int
    - k/x: int
    - kk: int
    - l/99: int
    - k/8: long
    - k/9: long
    foreign key: k -> k of P
    foreign key: k/8 -> k of Q
      role name map k: k -> k/8
    foreign key: k/9 -> k of R
      role name map k: k -> k/9
  class P
    - k: int
    primary key k: k
  class Q
    - k: int
    primary key k: k
  class R
    - k: int
    primary key k: k
  association a: C, P
    role c: C (source, foreign key k)
    role p: P
  association b: C, Q
    role c: C (source, foreign key k/8)
    role q: Q
  association c: C, R
    role c: C (source, foreign key k/9)
    role r: R
)"},
};

TEST(Validation, SplitsAttributesOfSeveralKeys) {
    expectPackages(shared);
}

TEST(Validation, SearchesTheNamesOfCopiesOnce) {
    constexpr int names = 20'000;
    constexpr int keys = 5'000;
    const std::clock_t start = std::clock();
    KelClass owner;
    const auto addAttribute = [&](const std::string& name) {
        auto* attribute = new KelAttribute;
        attribute->setName(KelString(name));
        owner.addAttribute(attribute);
        return attribute;
    };
    KelAttribute& shared = *addAttribute("k");
    for (int number = 1; number <= names; ++number) {
        addAttribute("k/" + std::to_string(number));
    }
    for (int number = 0; number < keys; ++number) {
        auto* key = new KelForeignKey;
        owner.addKey(key);
        key->addAttribute(&shared);
    }
    const std::clock_t built = std::clock();
    rose::ValidateAttributes(&owner);
    const std::clock_t validated = std::clock();
    EXPECT_LT(validated - built, 50 * (built - start)) << "a search for each copy takes 500 times as long";
    EXPECT_EQ(owner.getAttributeCount(), 1 + names + keys - 1);
}

TEST(Validation, ReportsACopyThatTheClassRefuses) {
    // The number behind the largest does not fit, and the one that it turns into is taken.
    const ImportedModel imported = importLogicalView(R"(
(object Class "C")
object ClassAttribute "k"
object ClassAttribute "k/2147483647"
object ClassAttribute "k/-2147483648"
(object Class "P")
 (object Association "a")
  (object Role "" supplier "C")
  (object Role "" supplier "P" keys (list (object ClassAttribute "k")
 (object Association "b")
  (object Role "" supplier "C")
  (object Role "" supplier "P" keys (list (object ClassAttribute "k")
)");
    EXPECT_EQ(imported.failure, "");
    EXPECT_EQ(imported.log.count("QEV_RRSE_W0019"), 1);
    EXPECT_NE(packagesOf(imported).find("foreign key -> k of P"), std::string::npos) << packagesOf(imported);
}

TEST(Validation, AsksForEachRoleWhetherItsClassWaits) {
    const ImportedModel imported = importLogicalView(R"(
(object Class "A")
 (object Association "a")
  (object Role "r" supplier "A")
  (object Role "s" supplier "B")
  (object Role "t"
  (object Role "u" supplier "A"
)");
    EXPECT_EQ(imported.log.count("QEV_RRSE_D0012 Class name to be found is A"), 1); // the third role ends it
    EXPECT_EQ(imported.log.count("QEV_RRSE_D0012 Class name to be found is B"), 1);
}

} // namespace
