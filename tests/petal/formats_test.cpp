#include "export/exporters.h"
#include "petal/Shell.h"

#include <rapidjson/document.h>

namespace {

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

/// petal with the bridge that belongs to it, and a model.
class Formats : public Shell {
protected:
    Formats() : Shell("") { std::filesystem::copy_file(PETAL_EXAMPLES "/bookshop.mdl", pathOf("m.mdl")); }
};

TEST_F(Formats, FollowFromTheOutputsName) {
    struct Row {
        const char* arguments;
        const char* start; // of out/*
    };
    for (const Row& row : {
             Row{"-o out/m.txt", "model m\n"}, Row{"-o out/m.TXT -f json", "{\n"}, Row{"-o out/m.json", "{\n"},
             Row{"-o out/m.json --format tree", "model m\n"}, Row{"-o out/m.txt.new", "{\n"},
             Row{"-o out/ -f tree", "model m\n"}, // a file of that format's ending, see below
         }) {
        const Ended ended =
            run(std::string("rm -rf out; mkdir out; $petal import m.mdl -q ") + row.arguments + "; head -n 1 out/*");
        EXPECT_EQ(ended.output, row.start) << row.arguments << ended.errors;
    }
    EXPECT_EQ(filesBelow("out"), std::set<std::string>{"m.mdl.txt"});
}

TEST_F(Formats, OptionsAreCheckedBeforeAnythingIsDone) {
    struct Row {
        const char* arguments;
        const char* errors;
    };
    for (const Row& row : {
             Row{"-O places=perhaps", "format json: 'places=perhaps' is none of places=true|false\n"},
             Row{"-O places=true -O frob=1", "format json: there is no option 'frob'; the options are places="},
             Row{"-o m.txt -O places=true", "format tree: there is no option 'places'; there are no options\n"},
             Row{"m.mdl -o out/ -O places", "format json: 'places' is not NAME=VALUE; the options are places="},
         }) {
        const Ended ended = run(std::string("$petal import m.mdl ") + row.arguments);
        EXPECT_EQ(ended.status, 2) << row.arguments;
        EXPECT_TRUE(contains(ended.errors, row.errors)) << ended.errors;
        EXPECT_EQ(files(), std::set<std::string>{"m.mdl"});
    }
    EXPECT_EQ(run("$petal import m.mdl -q -O places=true -O places=false").output,
              run("$petal import m.mdl -q").output);
}

TEST_F(Formats, AreListedWithTheirOptions) {
    const std::string table = run("$petal formats").output;
    rapidjson::Document document;
    document.Parse(run("$petal formats --json").output.c_str());
    ASSERT_FALSE(document.HasParseError());
    const auto& listed = document["formats"];
    ASSERT_EQ(listed.Size(), exporter::exporters().size());
    rapidjson::SizeType at = 0;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        const std::string name(exporter.format);
        EXPECT_TRUE(contains("\n" + table, "\n" + name + " ")) << table;
        EXPECT_EQ(listed[at].FindMember("options") != listed[at].MemberEnd(), !exporter.options.empty());
        EXPECT_EQ(listed[at++]["name"].GetString(), name);
        const std::string options = run("$petal formats " + name).output;
        for (const exporter::Option& option : exporter.options) {
            EXPECT_TRUE(contains(options, "-O " + std::string(option.name) + "=" + std::string(option.values)));
        }
    }
    EXPECT_TRUE(contains(run("$petal formats json --json").output, R"("default": "false")"));
    EXPECT_EQ(run("$petal formats frob").status, 2);
}

TEST_F(Formats, TypesHaveShortNames) {
    for (const char* names : {"cpp C++", "oracle 'Oracle 7.x & 8'"}) {
        const Ended ended = run(std::string("set -- ") + names +
                                "; $petal import m.mdl -q --types $1 >a && $petal import m.mdl -q --types \"$2\" >b && "
                                "cmp a b && $petal options | grep -F \"$2\" | grep -c \"(short: $1)\"");
        EXPECT_EQ(ended.output, "1\n") << ended.errors;
    }
}

// The outline says nothing of where the file is, and git shows what changed in the model.
TEST_F(Formats, TextconvIsForGit) {
    const std::string outline = run("$petal textconv m.mdl").output;
    EXPECT_EQ(outline.find("model\n  origin (format MDL"), 0U) << outline;
    EXPECT_EQ(run("mkdir -p x; cp m.mdl 'x/a b'; cd x; $petal textconv \"$PWD/a b\"; rm -r ../x").output, outline);
    put("empty", "");
    const Ended failed = run("$petal textconv empty");
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(contains(failed.errors, "Invalid input file format")) << failed.errors;
    if (run("command -v git").status != 0) {
        GTEST_SKIP() << "git is not installed";
    }
    const Ended ended = run(R"(unset $(git rev-parse --local-env-vars)
        export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_NOSYSTEM=1
        git init -q . && git config user.name N && git config user.email E
        git config diff.petal.textconv "'$petal' textconv"
        echo '*.mdl diff=petal' >.gitattributes
        changes() { git "$@" | grep '^[-+] '; }
        git add -A && git commit -q -m one
        sed -i 's/"credit"/"balance"/' m.mdl && changes diff
        git commit -q -a -m two && changes log -1 -p
        git mv m.mdl n.mdl && sed -i 's/"price"/"cost"/' n.mdl && git add -A && changes diff --cached -M)");
    const std::string renamed = "-        # credit: double\n+        # balance: double\n";
    EXPECT_EQ(ended.output, renamed + renamed + "-        + price: double\n+        + cost: double\n");
    EXPECT_EQ(ended.errors, "");
}

} // namespace
