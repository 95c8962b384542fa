#include "Shell.h"

namespace {

using namespace std::string_literals;

/// petal with the bridge that belongs to it.
class RealBridge : public Shell {
protected:
    RealBridge() : Shell("") {}
};

const std::string header = "\n(object Petal\n    version    \t50\n    charSet    \t134)\n";

struct Input {
    const char* what;
    std::string contents;
    const char* errors; // a part of them; null for an import that succeeds
};

TEST_F(RealBridge, TakesOnlyModelFiles) {
    constexpr const char* badFormat = "petal: [QEV_RRSE_F0002] Invalid input file format\npetal: ";
    const Input rows[] = {
        {"usual", header, nullptr},
        {"header alone", "(object Petal", nullptr},
        {"header at byte 7", "1234567(object Petal\n", nullptr},
        {"header at byte 8", "12345678(object Petal\n", badFormat},
        {"12 bytes", "(object Peta", badFormat},
        {"NUL ahead of the header", "\0(object Petal\n"s, badFormat},
        {"NUL in the header", "(object\0Petal\n"s, badFormat},
        {"empty", "", "Invalid input file format\npetal: It is empty."},
    };
    for (const Input& row : rows) {
        put("input.mdl", row.contents);
        const Ended ended = run("$petal import input.mdl -q -o out");
        const bool succeeds = row.errors == nullptr;
        EXPECT_EQ(ended.status, succeeds ? 0 : 1) << row.what;
        EXPECT_EQ(files().contains("out"), succeeds) << row.what;
        if (succeeds) {
            EXPECT_EQ(ended.errors, "") << row.what;
        } else {
            EXPECT_NE(ended.errors.find(row.errors), std::string::npos) << row.what << ended.errors;
        }
        std::filesystem::remove(pathOf("out"));
    }
}

TEST_F(RealBridge, RefusesWhatIsNoFile) {
    struct Row {
        const char* arguments;
        int status;
        const char* errors;
    };
    constexpr Row rows[] = {
        {"missing.mdl", 1, "petal: [QEV_RRSE_F0001] Unable to open input file : missing.mdl\npetal: No such file"},
        {"''", 1, "[QEV_RRSE_F0001] Unable to open input file : \n"},
        {".", 2, "several models need a folder to be written to"},
        {"a.mdl --types c++", 2, R"('c++' is none of "C++", "Oracle 7.x & 8")"},
        {"a.mdl --encoding frob", 2, "there is no encoding 'frob'"},
    };
    put("a.mdl", header);
    for (const Row& row : rows) {
        const Ended ended = run(std::string("$petal import ") + row.arguments);
        EXPECT_EQ(ended.status, row.status) << row.arguments;
        EXPECT_NE(ended.errors.find(row.errors), std::string::npos) << ended.errors;
        EXPECT_EQ(ended.output, "");
    }
}

TEST_F(RealBridge, TakesTheEncodingFromTheHeader) {
    put("a.mdl", header + "\n(object Class_Category \"Logical View\"\n(object Class \"\xD6\xD0\"\n"
                          "    classAttributes \t(list class_attribute_list\n"
                          "(object ClassAttribute \"a\"\n    type \"NUMBER(10,2)\")))\n");
    struct Row {
        const char* arguments;
        const char* part; // of the output
    };
    constexpr Row rows[] = {
        {"", "\"name\": \"\xE4\xB8\xAD\""},
        {"--format tree", "class \xE4\xB8\xAD\n"},
        {"--encoding KOI8-R", "\"name\": \"\xD0\xB6\xD0\xBF\""},
        {"--encoding unknown", "\"lossy\": true"},
        {"--encoding unknown --format tree", "class \\xd6\\xd0\n"},
        {"--types 'Oracle 7.x & 8'", "\"scale\": 2"},
    };
    for (const Row& row : rows) {
        const Ended ended = run(std::string("$petal import a.mdl ") + row.arguments);
        EXPECT_NE(ended.output.find(row.part), std::string::npos) << row.arguments << ended.output << ended.errors;
    }
}

TEST_F(RealBridge, IsFoundThroughLinksToPetal) {
    const Ended ended = run("ln -s $petal link; ./link --version");
    EXPECT_NE(ended.output.find("\nbridge: 5.2.0 - Jun 12 2007 10:50:18\n"), std::string::npos) << ended.errors;
}

} // namespace
