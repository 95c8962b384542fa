#include "host/literals/KelLiteralRegistry.h"
#include "host/literals/KelParameterizedTextLiteral.h"
#include "host/literals/KelTextLiteralsCollection.h"
#include "host/literals/messageCode.h"
#include "host/log/KelException.h"
#include "host/log/Severity.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

class KelDOMElement {};

namespace {

TEST(SeverityTest, WordsAndLevelsAnswerEachOther) {
    const char* words[] = {"FATAL", "ERROR", "WARNING", "STATUS", "DEBUG"};
    for (int level = 1; level <= 5; ++level) {
        EXPECT_STREQ(severityWord(level), words[level - 1]);
        EXPECT_EQ(severityLevel(words[level - 1]), level);
    }
    for (const char* unknown : {"", "fatal", "FATAL ", "FATA"}) {
        EXPECT_EQ(severityLevel(unknown), 0) << unknown;
    }
    EXPECT_EQ(severityWord(0), nullptr);
    EXPECT_EQ(severityWord(6), nullptr);
}

TEST(KelExceptionTest, CopiesKeepTheMessageWhenTheOriginalIsGone) {
    std::optional<KelException> original(KelString("no \0 end", 8));
    const KelException copy(*original);
    original.reset();
    EXPECT_EQ(copy.getMessage(), KelString("no \0 end", 8));
    EXPECT_STREQ(copy.what(), "no ");
}

struct FillRow {
    const char* text;
    std::vector<const char*> values; // null: not set
    const char* expected;
};

TEST(KelParameterizedTextLiteralTest, FillsPlacesInOnePass) {
    const FillRow rows[] = {
        {"Creating class {0}...", {"Order"}, "Creating class Order..."},
        {"{0}", {""}, ""},
        {"{0}{1}{0}", {"a", "b"}, "aba"},
        {"{0} {1}", {"{1}", "{0}"}, "{1} {0}"},
        {"{0}", {"{0}{0}"}, "{0}{0}"},
        {"{1}", {"a"}, "{1}"},
        {"{0}{1}", {nullptr, "b"}, "{0}b"},
        {"{10}{0}", {"a"}, "{10}a"},
        {"{{0}} {} {x} {0 {-0} { 0} {0x} {", {"a"}, "{a} {} {x} {0 {-0} { 0} {0x} {"},
        {"{99999999999999999999}", {"a"}, "{99999999999999999999}"},
        {"none", {"a"}, "none"},
        {"", {"a"}, ""},
    };
    for (const FillRow& row : rows) {
        const KelParameterizedTextLiteral literal("ID", row.text);
        KelTextParameters parameters = literal.prapareForParameters();
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            if (row.values[i] != nullptr) {
                literal.setParameterValue(parameters, static_cast<int>(i), row.values[i]);
            }
        }
        literal.setParameterValue(parameters, -1, "ignored");
        EXPECT_EQ(literal.createParametrizedText(parameters), row.expected) << row.text;
    }
}

TEST(KelParameterizedTextLiteralTest, UpdateTakesTheTextOfAnEntry) {
    KelParameterizedTextLiteral literal("ID", "text");
    const KelDOMElement entry;
    literal.update("ignored", nullptr);
    EXPECT_EQ(literal.getText(), "text");
    literal.update("Text", &entry);
    EXPECT_EQ(literal.getText(), "Text");
    EXPECT_EQ(literal.getIdentifier(), "ID");
}

TEST(MessageCodeTest, PadsTheShortCode) {
    const char* rows[][4] = {
        {"QEV_RRSE", "FATAL", "1", "QEV_RRSE_F0001"},
        {"QEV_RRSE", "STATUS", "13", "QEV_RRSE_S0013"},
        {"X", "DEBUG", "1234", "X_D1234"},
        {"X", "DEBUG", "12345", "X_D12345"},
        {"QEV_RRSE", "WARNING", "", "QEV_RRSE_W0000"},
        {"X", "", "7", "X_0007"},
    };
    for (const auto& [prefix, severity, code, expected] : rows) {
        EXPECT_EQ(fullMessageCode(prefix, severity, code), expected);
    }
}

class OneLiteral final : public KelTextLiteralsCollection {
public:
    explicit OneLiteral(const char* documentId) : documentId_(documentId) {}
    const KelString& getDocumentId() const override { return documentId_; }
    KelTextLiteral* const* listAllLiterals() const override { return list_; }

private:
    KelString documentId_;
    KelTextLiteral literal_{"ID", "text"};
    KelTextLiteral* list_[2] = {&literal_, nullptr};
};

TEST(KelLiteralRegistryTest, HoldsACollectionAsLongAsItLives) {
    const KelLiteralRegistry& registry = KelLiteralRegistry::instance();
    std::optional<OneLiteral> first("Document");
    EXPECT_EQ(registry.findCollection("Document"), nullptr);
    EXPECT_TRUE(first->init());
    EXPECT_TRUE(first->init());
    {
        OneLiteral second("Document");
        EXPECT_FALSE(second.init());
        EXPECT_EQ(registry.findCollection("Document"), &*first);
    }
    EXPECT_EQ(registry.findCollection("Document"), &*first) << "the refused one took the other out";
    first.reset();
    EXPECT_EQ(registry.findCollection("Document"), nullptr);
}

TEST(KelLiteralRegistryTest, TheHostsOwnLiteralsAreRegisteredWithIdentifiersOfTheirOwn) {
    for (const char* document : {"KelHostMessages", "KelHostOptions"}) {
        const KelTextLiteralsCollection* collection = KelLiteralRegistry::instance().findCollection(document);
        ASSERT_NE(collection, nullptr) << document;
        std::set<std::string> identifiers;
        for (KelTextLiteral* const* literal = collection->listAllLiterals(); *literal != nullptr; ++literal) {
            EXPECT_TRUE(identifiers.emplace((*literal)->getIdentifier().view()).second);
        }
        EXPECT_GE(identifiers.size(), 4U) << document;
    }
}

} // namespace
