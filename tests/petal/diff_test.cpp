#include "Shell.h"
#include "diff/PackedDocument.h"
#include "diff/rules.h"
#include "diff/writers.h"
#include "support/HostileTexts.h"
#include "support/keepDocument.h"
#include "text/escape.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

/// A model with a class, whose name and attributes are given.
std::string modelWith(const std::string& name, const std::string& attributes, const std::string& more = "") {
    return "(object Petal version 42 charSet 0)\n"
           "(object Design \"Logical View\" root_category (object Class_Category \"Logical View\"\n"
           "  logical_models (list unit_reference_list (object Class_Category \"Sales\" quid \"4A0000000001\"\n"
           "    logical_models (list unit_reference_list\n"
           "      (object Class \"" +
           name +
           "\" quid \"4A0000000002\" class_attributes (list class_attribute_list\n"
           "        " +
           attributes + "))\n" + more + "))) logical_presentations (list unit_reference_list)))\n";
}

std::string attribute(const std::string& name, const std::string& quid, const std::string& type) {
    return "(object ClassAttribute \"" + name + "\" quid \"" + quid + "\" type \"" + type + "\")\n";
}

class Diff : public Shell {
protected:
    Diff() {
        put("a.mdl",
            modelWith("Order", attribute("id", "4A0000000003", "int") + attribute("total", "4A0000000004", "int") +
                                   attribute("note", "4A0000000005", "String")));
        put("b.mdl", modelWith("PurchaseOrder", attribute("id", "4A0000000003", "String") +
                                                    attribute("note", "4A0000000005", "String") +
                                                    attribute("date", "4A0000000006", "String")));
    }

    /// The lines of a report for people, without the first one.
    [[nodiscard]] std::string changes(const std::string& arguments) const {
        const std::string output = run("$petal diff -q a.mdl b.mdl " + arguments).output;
        return output.substr(std::min(output.find('\n') + 1, output.size()));
    }
};

TEST_F(Diff, PrintsATreeOfChanges) {
    const Ended all = run("$petal diff a.mdl b.mdl");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.errors, "");
    EXPECT_TRUE(all.output.starts_with("a.mdl → b.mdl: 1 added, 3 removed, 1 renamed, 1 changed (5 breaking)\n"));
    EXPECT_EQ(all.output.substr(all.output.find('\n') + 1),
              "  package Logical View\n"
              "    package Sales\n"
              "    > class Order → PurchaseOrder  [class-renamed, breaking]\n"
              "      - attribute total: int  [attribute-removed, breaking]\n"
              "      ~ attribute id: type int → String  [attribute-type-changed, breaking]\n"
              "      + attribute date: String  [attribute-added, compatible]\n"
              "- type int (base)  [type-removed, breaking]\n"
              "- type int (derived)  [type-removed, breaking]\n");
    EXPECT_EQ(run("$petal diff a.mdl a.mdl").output, "a.mdl → a.mdl: no changes\n");
    EXPECT_TRUE(has(run("$petal diff --stat a.mdl b.mdl").output, " Logical View::Sales: +1 -1 >1 ~1 (3 breaking)\n"));
    EXPECT_TRUE(has(run("$petal diff --color always a.mdl b.mdl").output, "\x1b[31m- attribute total: int\x1b[0m"));
    EXPECT_EQ(run("$petal diff a.mdl b.mdl -o r.txt; cat r.txt").output, all.output);
}

TEST_F(Diff, TakesDocumentsAndStandardInput) {
    const std::string direct = changes("");
    ASSERT_EQ(run("$petal import -q a.mdl -f json -O places=true -o a.json").status, 0);
    EXPECT_EQ(run("$petal diff a.json b.mdl | tail -n +2").output, direct);
    EXPECT_EQ(run("$petal diff - b.mdl <a.json | tail -n +2").output, direct);
    EXPECT_EQ(run("cat a.mdl | $petal diff - b.mdl | tail -n +2").output, direct);
    EXPECT_EQ(run("export petal; bash -c '\"$petal\" diff <(cat a.json) <(cat b.mdl)' | tail -n +2").output, direct);
    const std::string json = run("$petal diff a.json b.mdl -f json").output;
    keepDocument(json);
    EXPECT_TRUE(has(json, "\"qualifiedName\": \"Logical View::Sales::Order\",\n        \"line\": 5\n"));
    EXPECT_TRUE(has(json, "\"file\": \"b.mdl\",\n        \"line\": 5\n"));
}

// Model files are imported without the detour over JSON, and their quids are searched for.
TEST_F(Diff, SeesTheSameInAModelFileAndItsDocument) {
    const std::string text = "documentation \"\x01 \xc3\xa4 \xff\\\"\"\n";
    put("hostile.mdl", modelWith("Order\xe9\x7f", attribute("\xc3", "4a0000000003", "int"),
                                 "(object Class \"X\" " + text + " quid \"4AbC\")"));
    for (const std::string model : {"a.mdl", "hostile.mdl", PETAL_EXAMPLES "/everything.mdl"}) {
        SCOPED_TRACE(model);
        ASSERT_EQ(run("$petal import -q -f json -O places=true -o same.json " + model).status, 0);
        for (const char* form : {"text", "json"}) {
            const std::string shown = std::string(" --show order,quids,encoding,units --fail-on any -f ") + form;
            EXPECT_EQ(run("$petal diff " + model + " same.json" + shown).status, 0);
        }
    }
}

TEST(PackedDocument, IsRefusedUnlessItIsWhole) {
    struct Bytes final : text::Output {
        void write(std::string_view bytes) override { text += bytes; }
        std::string text;
    } bytes;
    diff::DocumentPacker packer(bytes);
    packer.startObject();
    packer.key("format");
    packer.text("petal-model");
    packer.key("model");
    packer.startObject();
    packer.key("id");
    packer.number(1);
    packer.key("name");
    packer.text(std::string(300, 'n') + "\xff");
    packer.key("quid");
    packer.text("4A");
    packer.key("types");
    packer.startList();
    packer.startObject();
    packer.key("id");
    packer.number(200);
    packer.key("kind");
    packer.text("derived");
    packer.key("length");
    packer.number(-7);
    packer.key("userDefined");
    packer.truth(true);
    packer.endObject();
    packer.endList();
    packer.endObject();
    packer.endObject();
    packer.finish();
    const auto read = [&](std::size_t size) {
        const auto kept = std::make_shared<const std::string>(bytes.text, 0, size);
        return diff::readPacked({kept, kept->data()}, size);
    };
    const diff::Model model = read(bytes.text.size());
    ASSERT_EQ(model.count(), 1U);
    EXPECT_EQ(model[0].name, std::string(300, 'n') + "\xef\xbf\xbd");
    EXPECT_EQ(model[0].quid, "4a");
    EXPECT_EQ(model[1].kind, diff::Kind::type);
    EXPECT_EQ(static_cast<std::int64_t>(model.find(1, diff::FieldId::length)->value), -7);
    EXPECT_NE(model.find(1, diff::FieldId::userDefined), nullptr);
    for (std::size_t size = 0; size < bytes.text.size(); ++size) {
        EXPECT_THROW(static_cast<void>(read(size)), diff::BadDocument) << size;
    }
    int refused = 0;
    for (std::size_t at = 0; at < bytes.text.size(); ++at) {
        for (const char other : std::string("\0\1\2\3\4\5\6\7\x8\x9\xa\xb\xc\x7f\xff", 15)) {
            const auto damaged = std::make_shared<std::string>(bytes.text);
            (*damaged)[at] = other;
            try {
                static_cast<void>(diff::readPacked({damaged, damaged->data()}, damaged->size()));
            } catch (const diff::BadDocument&) {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 500);
}

TEST_F(Diff, MatchesAsItIsTold) {
    EXPECT_TRUE(has(changes("--renames quid"), "class-renamed"));
    const std::string none = changes("--renames no");
    EXPECT_TRUE(has(none, "- class Order") && has(none, "+ class PurchaseOrder") && has(none, "+ attribute note"));
    // without quids only what it has tells the class
    ASSERT_EQ(run("for m in a b; do sed 's/quid \"[^\"]*\"//' $m.mdl >q; mv q $m.mdl; done").status, 0);
    EXPECT_TRUE(has(changes(""), "- class Order")); // one of three attributes is left as it was
    ASSERT_EQ(run("sed -i 's/\"id\"  type \"String\"/\"id\"  type \"int\"/; /\"date\"/d' b.mdl").status, 0);
    EXPECT_TRUE(has(changes(""), "> class Order → PurchaseOrder  "
                                 "[class-renamed, breaking, matched by content]"));
    EXPECT_TRUE(has(changes("--renames quid"), "- class Order"));
    // quids that mean nothing
    ASSERT_EQ(
        run("cp a.mdl old; $petal import -q a.mdl -f json -O places=true | sed 's/\"line\": /\"quid\": \"7F\",\\n&/' "
            ">/dev/null")
            .status,
        0);
    put("a.mdl", modelWith("Order", attribute("id", "4A0000000003", "int") + attribute("note", "4A0000000005", "int")));
    put("b.mdl", modelWith("Order", attribute("id", "4B0000000003", "int") + attribute("note", "4B0000000005", "int")));
    ASSERT_EQ(run("sed -i 's/\"4A/\"4B/' b.mdl").status, 0);
    EXPECT_TRUE(has(run("$petal diff a.mdl b.mdl").output,
                    "no changes\n(elements are matched by name, as the models share most names and hardly any quid)"));
    EXPECT_TRUE(has(changes("--show quids"), "quid 4a0000000003 → 4b0000000003  [quid-changed, information]"));
}

TEST_F(Diff, LeavesOutAndFails) {
    put("ignore", "# known\n\nattribute-* nothing\n");
    EXPECT_EQ(run("$petal diff a.mdl b.mdl --ignore-file ignore").status, 2);
    put("ignore", "# known\n\nattribute-removed *::Order::*\n* Logical View::Sales::PurchaseOrder\ntype-removed\n");
    const std::string left = changes("--ignore-file ignore --ignore attribute-added");
    EXPECT_TRUE(has(left, "attribute-type-changed"));
    EXPECT_EQ(std::ranges::count(left, '['), 1) << left;
    const std::string diff = "$petal diff a.mdl b.mdl ";
    EXPECT_EQ(run(diff + "--fail-on breaking").status, 3);
    EXPECT_EQ(run(diff + "--fail-on any").status, 3);
    EXPECT_EQ(run(diff + "--fail-on role-added,class-renamed").status, 3);
    EXPECT_EQ(run(diff + "--fail-on role-added").status, 0);
    EXPECT_EQ(run(diff + "--fail-on attribute-added --ignore attribute-added").status, 0);
    EXPECT_EQ(run("$petal diff a.mdl a.mdl --fail-on any").status, 0);
}

TEST_F(Diff, RefusesWhatItCannotCompare) {
    put("text", "nothing");
    put("bad.json", "{\"format\": \"petal-model\", ");
    put("other.json", R"({"format": "petal-report", "formatVersion": 1, "files": []})");
    put("newer.json", R"({"format": "petal-model", "formatVersion": 2, "model": {"id": 1, "name": "m"}})");
    put("odd.json", R"({"format": "petal-model", "formatVersion": 1, "model": {"id": 1, "name": "m", "size": 3}})");
    put("lost.json", R"({"format": "petal-model", "formatVersion": 1, "model": {"id": 1, "name": "m",
        "types": [{"id": 2, "kind": "derived", "name": "t", "derivedFrom": 9}]}})");
    expectRefusals(
        "$petal diff ",
        {
            {"a.mdl", 2, "a comparison takes two models, and not 1"},
            {"- - <a.mdl", 2, "standard input can be one of the two models only"},
            {"gone.mdl a.mdl", 1, "cannot read 'gone.mdl'"},
            {"a.mdl text", 1, "'text' cannot be imported"},
            {"a.mdl bad.json", 1, "'bad.json' is not a JSON document that petal can compare: it is not JSON"},
            {"a.mdl other.json", 1, "only a petal-model can be compared"},
            {"a.mdl newer.json", 1, "its formatVersion is 2, and this petal reads 1"},
            {"a.mdl odd.json", 1, "petal writes no member 'size'"},
            {"a.mdl lost.json", 1, "refers to an element 9"},
            {"a.mdl b.mdl --ignore class-renam", 2, "The most similar one is 'class-renamed'"},
            {"a.mdl b.mdl --fail-on worst", 2, "--fail-on: there is no rule 'worst'"},
            {"a.mdl b.mdl --show colours", 2, "--show"},
            {"a.mdl b.mdl --stat -f json", 2, "--stat"},
            {"a.mdl b.mdl -o b.mdl", 2, "would overwrite"},
            {"--git a.mdl b.mdl", 2, "--git takes 1, 7 or 9 arguments"},
        });
}

TEST_F(Diff, KeepsHostileTextsTexts) {
    std::size_t number = 0;
    std::vector<std::string> texts(hostileTexts.begin(), hostileTexts.end());
    texts.push_back(longHostileText());
    std::string elements;
    for (const std::string& text : texts) {
        const std::string id = std::to_string(++number + 2);
        elements += std::string(number > 1 ? "," : "") + R"({"id": )" + id + R"(, "kind": "class", "name": )" +
                    text::quotedJsonText(text) + R"(, "description": )" + text::quotedJsonText(text) + "}";
    }
    const std::string start = R"({"format": "petal-model", "formatVersion": 1, "model": {"id": 1, "name": "m",)"
                              R"("packages": [{"id": 2, "name": "P", "elements": [)";
    put("none.json", start + "]}]}}");
    put("all.json", start + elements + "]}]}}");
    ASSERT_EQ(run("sed 's/\"description\": \"/&x/g' all.json >other.json").status, 0);
    for (const char* pair : {"none.json all.json", "all.json none.json", "all.json other.json"}) {
        for (const diff::Form& form : diff::forms()) {
            const Ended ended = run(std::string("$petal diff -f ") + std::string(form.name) + " " + pair);
            EXPECT_EQ(ended.status, 0) << ended.errors;
            for (const std::string_view part : {"\x01", "\xE2\x80\xAE", "\xFF", "\r"}) {
                EXPECT_EQ(ended.output.find(part), std::string::npos) << form.name << " " << pair;
            }
            if (form.name == "json") {
                keepDocument(ended.output);
            } else {
                // a line for each change, and no line that a text has begun
                EXPECT_TRUE(has(ended.output, "a\\nb") || has(ended.output, "a\\\\nb"));
                EXPECT_EQ(ended.output.find("\n!include"), std::string::npos);
                EXPECT_EQ(form.name != "html" ? std::string::npos : ended.output.find("</script"), std::string::npos);
            }
        }
    }
    EXPECT_TRUE(has(run("$petal diff -f html none.json all.json").output, "&lt;/script&gt;"));
    EXPECT_TRUE(has(run("$petal diff -f markdown none.json all.json").output, "`**b** __u__ //i// ~t $var`"));
}

/// A repository with a model in two versions, set up as the documentation says.
TEST_F(Diff, WorksForGit) {
    if (run("git --version").status != 0) {
        GTEST_SKIP() << "git is missing";
    }
    const auto setUp = [&](std::string_view key) { // the line of the documentation
        const std::ifstream file(PETAL_SOURCES "/docs/diff.md");
        std::stringstream page;
        page << file.rdbuf();
        std::string line;
        while (std::getline(page, line) && !line.starts_with("git config " + std::string(key) + " ")) {
        }
        line.replace(line.find("petal "), 5, "\\\"$petal\\\"");
        return line;
    };
    const std::string start = "export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null GIT_PAGER=cat; cd r; ";
    const std::string commit = "git add -A; git -c user.name=n -c user.email=e commit -qm m; ";
    ASSERT_EQ(
        run("mkdir r; git -c init.defaultBranch=b init -q r; cp a.mdl r; echo '*.mdl diff=petal' >r/.gitattributes; " +
            start + commit + setUp("diff.petal.command") + "; cp ../b.mdl a.mdl")
            .status,
        0);
    const Ended changed = run(start + "git diff");
    EXPECT_EQ(changed.status, 0);
    EXPECT_TRUE(changed.output.starts_with("a.mdl → a.mdl: 1 added, 3 removed, 1 renamed, 1 changed"))
        << changed.output << changed.errors;
    EXPECT_TRUE(has(run(start + "git mv a.mdl c.mdl; git add -A; git diff --cached -M10 --ext-diff").output,
                    "a.mdl → c.mdl: 1 added, 3 removed, 1 renamed"));
    const Ended added = run(start + commit + "cp ../a.mdl n.mdl; git add -A; git diff --cached; rm c.mdl; git diff");
    EXPECT_EQ(added.errors, "");
    EXPECT_TRUE(has(added.output, "n.mdl → n.mdl: 10 added (0 breaking)\n"));
    EXPECT_TRUE(has(added.output, "c.mdl → c.mdl: 8 removed (8 breaking)\n"));

    const Ended outline = run(start + "git config --unset diff.petal.command; git checkout -q -- .; " +
                              setUp("diff.petal.textconv") + "; cp ../a.mdl c.mdl; git diff");
    EXPECT_TRUE(has(outline.output, "\n+      class Order"));
    EXPECT_TRUE(has(outline.output, "\n-      class PurchaseOrder"));
    EXPECT_EQ(run("$petal diff --git x.mdl").output, "* Unmerged path x.mdl\n");
}

TEST(DiffRules, AreThoseOfTheDocumentationAndMirrorEachOther) {
    const std::ifstream file(PETAL_SOURCES "/docs/diff.md");
    std::stringstream page;
    page << file.rdbuf();
    std::string rows = "| Rule | Weight | Meaning |\n|---|---|---|\n";
    for (const diff::Rule& rule : diff::rules()) {
        rows.append("| `").append(rule.name).append("` | ").append(weightWord(rule.weight));
        rows.append(" | ").append(rule.text).append(" |\n");
        const std::optional<diff::RuleId> mirror = diff::findRule(rule.mirror);
        ASSERT_TRUE(mirror) << rule.name;
        EXPECT_EQ(diff::ruleOf(*mirror).mirror, rule.name);
    }
    EXPECT_TRUE(has(page.str(), rows));
}

} // namespace
