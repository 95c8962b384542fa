#include "LedgerText.h"

#include <gtest/gtest.h>

namespace {

TEST(LedgerBytes, AreToldWithTheirPlaces) {
    const LedgerText text = LedgerText::of(
        "(object Class \"A\xB7\"\n documentation \t\n|ok\n|\xD6\xD0\xB7 \xB7 y\n stereotype \"\xB7 \"\n"
        " word\xB7 \t12\n kind \tw\xB7\n cardinality \t(value c\xB7 \"1\")\n operations \t(list l\xB7))\n"
        "(object K\xB7 \"m\xB7 \" @3)\n(object K\xB7)",
        "", "windows-936");
    std::string found;
    for (const ledger::BadBytes& bad : text.badBytes) {
        found += std::to_string(bad.place.line - LedgerText::firstLine + 1) + ":" + std::to_string(bad.place.column) +
                 " " + std::to_string(bad.bytes.size()) + "\n";
    }
    EXPECT_EQ(found, "1:17 1\n4:4 1\n4:6 1\n5:14 1\n6:6 1\n7:9 1\n8:23 1\n9:21 1\n10:10 1\n10:14 1\n11:10 1\n");
}

TEST(LedgerDamages, AreToldAndCounted) {
    const LedgerText text = LedgerText::of("(object Class \"A\")\n junk words 17 \"text\" )\n(object Class \"B\"\n"
                                           " documentation \"unclosed\n stereotype \"s\")");
    std::string found;
    for (const ledger::DamagedPlace& damaged : text.ledger.damages) {
        found += std::to_string(damaged.damage.place.line - LedgerText::firstLine + 1) + " " +
                 notation::damageWord(damaged.damage.kind) + "\n";
    }
    EXPECT_EQ(found,
              "2 missingClose\n2 unnamedValue\n3 missingClose\n4 unclosedText\n5 surplusClose\n7 surplusClose\n");
    const LedgerText many = LedgerText::of(std::string(2 * ledger::mostDamages, ','));
    EXPECT_EQ(many.ledger.damages.size(), ledger::mostDamages);
    EXPECT_GE(many.ledger.damageCount, 2 * ledger::mostDamages);
}

} // namespace
