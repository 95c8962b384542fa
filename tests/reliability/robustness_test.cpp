// Whatever stands in a file, an import ends, leaks nothing and leaves a sound model.

#include "host/model/KelClass.h"
#include "host/model/KelDesignPackage.h"
#include "support/ImportedModel.h"
#include "support/RepositoryInvariants.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <ostream>
#include <random>
#include <sstream>
#include <vector>

namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Example {
    const char* file;
    bool isSmall;
};

void PrintTo(const Example& shown, std::ostream* stream) {
    *stream << shown.file;
}

class Examples : public testing::TestWithParam<Example> {
protected:
    const std::string bytes = contentsOf(std::string(PETAL_EXAMPLES "/") + GetParam().file);

    /// Whether a word, a number or a mark ends before this byte.
    [[nodiscard]] bool endsToken(std::size_t at) const {
        const auto isWordPart = [](char byte) {
            return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '_';
        };
        return at == 0 || !isWordPart(bytes[at]) || !isWordPart(bytes[at - 1]);
    }
};

TEST_P(Examples, CutOffAnywhereStillMakeASoundModel) {
    ASSERT_GT(bytes.size(), 1000U);
    const std::size_t headerEnd = bytes.find('(') + std::string_view("(object Petal").size();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        if (GetParam().isSmall || (endsToken(length) && bytes[length] != '\t')) {
            ImportedModel imported = ImportedModel::ofBytes(std::string_view(bytes).substr(0, length));
            EXPECT_EQ(imported.failure.empty(), length >= headerEnd);
            ASSERT_EQ(brokenInvariant(imported.model), "") << "cut at byte " << length;
        }
    }
}

TEST_P(Examples, WithTheirLinesInAnyOrderMakeASoundModelOrNone) {
    std::vector<std::string> lines;
    std::istringstream stream(bytes.substr(bytes.find("(object Design")));
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    int imports = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        std::string body("(object Class_Category \"Logical View\"\n(object ClassDiagram \"D\"\n");
        for (std::size_t count = 0; count < 2 * lines.size(); ++count) {
            body += lines[random() % lines.size()] + "\n";
        }
        ImportedModel imported = ImportedModel::ofBody(body, {.types = seed % 2 == 0 ? "C++" : "Oracle 7.x & 8"});
        imports += static_cast<int>(imported.failure.empty());
        ASSERT_EQ(brokenInvariant(imported.model), "") << "seed " << seed;
    }
    EXPECT_GT(imports, 200);
}

INSTANTIATE_TEST_SUITE_P(RobustnessTest, Examples,
                         testing::Values(Example{"bookshop.mdl", true}, Example{"everything.mdl", false}),
                         [](const auto& info) { return info.param.isSmall ? "bookshop" : "everything"; });

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int count = 0; count < times; ++count) {
        all += text;
    }
    return all;
}

struct OddFile {
    const char* what;
    std::string body;
    int packages; // at the top of the model
    int elements; // in the first of them
};

TEST(RobustnessTest, OddFiles) {
    const std::string logicalView = "(object Class_Category \"Logical View\"\n";
    const OddFile files[] = {
        {"no keyword at all", repeated("nothing of that kind\n", 1000), 0, 0},
        {"nothing but NULs", std::string(100'000, '\0'), 0, 0},
        {"every byte there is",
         logicalView +
             [] {
                 std::string all;
                 for (int byte = 0; byte < 256 * 256; ++byte) {
                     all += static_cast<char>(byte % 256);
                     all += static_cast<char>(byte / 256);
                 }
                 return all;
             }(),
         1, 0},
        {"a logical view that does not end", logicalView + "(object Class \"A\"", 1, 1},
        {"an enumeration of 1 MB", logicalView + "(object Class \"A\"\n\t(value Text \"{" + repeated("a,", 500'000), 1,
         0},
        {"a string over many lines",
         logicalView + "(object Class \"A\"\n documentation \"" + repeated("line\n", 10'000), 1, 1},
        {"no line ends with a line feed", logicalView + repeated("\r(object Class \"A\"\r", 1000), 1, 1},
        {"lists that end 20,000 times", logicalView + repeated(" logical_presentations x\n", 20'000), 1, 0},
    };
    for (const OddFile& file : files) {
        ImportedModel imported = ImportedModel::ofBody(file.body);
        EXPECT_EQ(imported.failure, "") << file.what;
        EXPECT_EQ(brokenInvariant(imported.model), "") << file.what;
        ASSERT_EQ(imported.model.childPackages().count(), file.packages) << file.what;
        if (file.packages > 0) {
            const auto& first = static_cast<const KelDesignPackage&>(*imported.model.childPackages()[0]);
            EXPECT_EQ(first.modelElements().count(), file.elements) << file.what;
        }
    }
}

TEST(RobustnessTest, NumbersTooLargeForAnything) {
    for (const std::string number : {"32768", "2147483648", "-2147483649", "9223372036854775808",
                                     "99999999999999999999999999999999", "-", "+1", "0x7F", "1e99"}) {
        const std::string body = "(object Class_Category \"Logical View\"\n(object Class \"A\"\n space " + number +
                                 "\n Parent_View @" + number + "\n(object ClassAttribute \"a/" + number +
                                 "\"\ntype \"char[" + number + "]\"\n(object ClassAttribute \"b\"\ntype \"NUMBER(" +
                                 number + "," + number + ")\"\n(object ClassAttribute \"c\"\ntype \"VARCHAR2(" +
                                 number + ")\"\n(object ClassDiagram \"D\"\n(object ClassView \"Class\" \"A\" @" +
                                 number + "\n(object InheritView \"\" @" + number + "\n client @" + number +
                                 "\n supplier @" + number + "\n NoteView @1\n Parent_View @" + number +
                                 "\n label \"n\"\n";
        for (const std::string_view types : {"C++", "Oracle 7.x & 8"}) {
            ImportedModel imported = ImportedModel::ofBody(body, {.types = types});
            EXPECT_EQ(imported.failure, "") << number;
            EXPECT_EQ(brokenInvariant(imported.model), "") << number;
            ASSERT_EQ(imported.model.childPackages().count(), 1) << number;
            const auto& logicalView = static_cast<const KelDesignPackage&>(*imported.model.childPackages()[0]);
            EXPECT_EQ(static_cast<const KelClass&>(*logicalView.modelElements()[0]).getAttributeCount(), 3) << number;
        }
    }
}

} // namespace
