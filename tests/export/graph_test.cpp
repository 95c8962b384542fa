#include "export/Shop.h"
#include "host/model/KelClassCategoryType.h"
#include "support/HostileTexts.h"
#include "support/ImportedModel.h"
#include "support/InFolder.h"
#include "support/Written.h"
#include "support/skipWithout.h"
#include "text/utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <regex>

namespace {

constexpr std::array formats{"plantuml", "mermaid", "dot"};

std::size_t countOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The text with each match of the pattern, which has a group, replaced by the character of that number.
std::string decoded(const std::string& text, const std::regex& pattern, int base) {
    std::string result;
    std::size_t at = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern); match != std::sregex_iterator(); ++match) {
        result += text.substr(at, static_cast<std::size_t>(match->position()) - at);
        const int number = std::stoi((*match)[1].str(), nullptr, base);
        result += number == 0xA0 ? ' ' : static_cast<char>(number);
        at = static_cast<std::size_t>(match->position() + match->length());
    }
    return result + text.substr(at);
}

/// The text until the list of what is left out.
std::string untilOmissions(const std::string& text) {
    const std::size_t end = text.find("Left out");
    return text.substr(0, text.rfind('\n', end) + 1);
}

TEST(Graphs, AreOneFormInThreeSyntaxes) {
    const Shop shop;
    EXPECT_EQ(writtenAs("plantuml", shop.model), R"(@startuml
set namespaceSeparator none
hide empty members
skinparam classAttributeIconSize 0
skinparam shadowing false
title Shop
package "Logical View" as p0 <<<U+006C>ayer>> {
  interface "Customer" as cea21ee24
  abstract class "Order" as c3a88b493 <T> <<entity>> {
    {field} +a
    {field} {static} +/pub : int = 7 <U+007B>id<U+007D>
    {field} #prot
    {field} -priv
    {field} <U+007E>impl
    {method} {static} +total(a : int, b = 0) : int
  }
note right of c3a88b493
central
end note
}
c3a88b493 "<U+005B>pub]" *--> "1 buyer" cea21ee24 : placed
cea21ee24 <|-- c3a88b493
c3a88b493 ..> cea21ee24 : d
' 2 classes, 1 association, 1 generalization, 1 dependency
' Left out: 1 relation without two classes: an edge has two ends
' Left out: 1 class diagram: the scope is another one
' Left out: 2 data types: types are names only
' Left out: 1 type value: types are names only
' Left out: 3 notes: only those of classes are drawn, and those of a picture's package or diagram
' Left out: 1 package without classes: a package is drawn around them
' Left out: 1 persistence flag: class diagrams do not show it
' Left out: 1 multiplicity of a class: class diagrams do not show it
' Left out: 2 concurrencies: class diagrams do not show it
' Left out: 1 space: class diagrams do not show it
' Left out: 3 containments: class diagrams do not show it
' Left out: 2 virtual flags: class diagrams do not show it
' Left out: 3 friend flags: class diagrams do not show it
' Left out: 1 static flag of a role: class diagrams do not show it
' Left out: 1 visibility of a generalization: class diagrams do not show it
@enduml
)");
    EXPECT_EQ(untilOmissions(writtenAs("mermaid", shop.model)), R"(---
title: "Shop"
config:
  class:
    hideEmptyMembersBox: true
---
classDiagram
direction TB
namespace Logical_View {
  class cea21ee24["Customer"] {
    <<interface>>
  }
  class c3a88b493["Order#60;T#62;"] {
    <<entity, abstract>>
    +a
    +/pub : int = 7 #123;id#125;$
    #prot
    -priv
    ~impl
    +total(a : int, b = 0) int$
  }
}
note for c3a88b493 "central"
c3a88b493 "#91;pub#93;" *--> "1 buyer" cea21ee24 : placed
cea21ee24 <|-- c3a88b493
c3a88b493 ..> cea21ee24 : d
%% 2 classes, 1 association, 1 generalization, 1 dependency
)");
    EXPECT_EQ(untilOmissions(writtenAs("dot", shop.model)), R"~(digraph "Shop" {
  graph [rankdir=TB, label="Shop", labelloc=t, nodesep=0.4, ranksep=0.6, fontname="Helvetica", fontsize=14]
  node [shape=plain, fontname="Helvetica", fontsize=10]
  edge [fontname="Helvetica", fontsize=9, arrowsize=0.8, labeldistance=1.8]
  subgraph "cluster_p0" {
    graph [label="«layer»\nLogical View", id="n638767be7eab4aba", fontsize=11, color="#888888"]
    cea21ee24 [id="nea21ee245c995f9e", label=<<table border="0" cellborder="1" cellspacing="0" cellpadding="4" bgcolor="white"><tr><td bgcolor="#e3f1e3">«interface»<br/><b>Customer</b></td></tr></table>>]
    c3a88b493 [id="n3a88b493022c1bb1", label=<<table border="0" cellborder="1" cellspacing="0" cellpadding="4" bgcolor="white"><tr><td bgcolor="#e4ebf7">«entity»<br/><i><b>Order&lt;T&gt;</b></i></td></tr><tr><td align="left" balign="left">+a<br align="left"/><u>+/pub : int = 7 {id}</u><br align="left"/>#prot<br align="left"/>-priv<br align="left"/>~impl<br align="left"/></td></tr><tr><td align="left" balign="left"><u>+total(a : int, b = 0) : int</u><br align="left"/></td></tr></table>>]
    n1 [shape=note, style=filled, fillcolor="#fffbe0", label="central\l"]
    c3a88b493 -> n1 [style=dashed, arrowhead=none]
  }
  c3a88b493 -> cea21ee24 [dir=both, arrowtail=diamond, arrowhead=vee, taillabel="[pub]", headlabel="1 buyer", label="placed"]
  cea21ee24 -> c3a88b493 [dir=both, arrowtail=onormal, arrowhead=none]
  c3a88b493 -> cea21ee24 [dir=both, arrowtail=none, arrowhead=vee, style=dashed, label="d"]
  // 2 classes, 1 association, 1 generalization, 1 dependency
)~");
}

/// A model of one class, all texts of which are `text`.
void addClass(KelDesignPackage& outer, const std::string& text) {
    const char* name = text.c_str();
    KelDesignPackage& package = addPackage(outer, name);
    package.stereotype = name;
    auto& one = addElement<KelClass>(package, name);
    one.stereotype = one.description = name;
    auto* type = named<KelBaseType>(name);
    static_cast<KelModel*>(static_cast<KelPackage*>(outer.getParentPackage()))->addType(type);
    auto* attribute = named<KelAttribute>(name);
    one.addAttribute(attribute);
    attribute->addType(type);
    attribute->initialValue = name;
    auto* operation = named<KelOperation>(name);
    one.addOperation(operation);
    operation->addReturnType(type);
    operation->addArgument(named<KelArgument>(name));
    one.addNote(note(("note\n" + text).c_str()));
    auto& association = addElement<KelAssociation>(package, name);
    addRole(association, name, &one).multiplicity = "1";
    addRole(association, name, &one).multiplicity = name;
}

/// A text as a consumer shows it on one line.
std::string shown(std::string_view text) {
    std::string flat = text::repairedUtf8(text);
    for (const char* hidden : {"\x01", "\xE2\x80\xAE", "\xEF\xBF\xBF"}) {
        flat = replaced(flat, hidden, "\uFFFD");
    }
    flat = replaced(replaced(flat, "\n", " "), "\r", " ");
    return flat.empty() ? "(unnamed)" : flat;
}

class GraphConsumers : public InFolder {
protected:
    static bool has(const std::string& program) {
        return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
    }
    /// The pictures of files of this ending; their names end in ".svg".
    void draw(const std::string& ending) const {
        const std::string command = ending == ".puml"
                                        ? "plantuml -charset UTF-8 -DPLANTUML_LIMIT_SIZE=32768 -tsvg *.puml"
                                        : "for file in *.dot; do dot -Tsvg \"$file\" -o \"${file%.dot}.svg\"; done";
        ASSERT_EQ(std::system(("cd " + folder.string() + " && (" + command + ") >log 2>&1").c_str()), 0) << get("log");
    }
    /// What a picture shows, each text on a line.
    static std::string textsOf(const std::string& svg) {
        static const std::regex text("<text[^>]*>([^<]*)</text>");
        static const std::regex entity("&#(\\d+);");
        std::string texts = "\n";
        for (std::sregex_iterator match(svg.begin(), svg.end(), text); match != std::sregex_iterator(); ++match) {
            texts += (*match)[1].str() + "\n";
        }
        texts = replaced(replaced(decoded(texts, entity, 10), "&lt;", "<"), "&gt;", ">");
        return replaced(replaced(replaced(texts, "&quot;", "\""), "\u00A0", " "), "&amp;", "&");
    }
};

class HostileGraphs : public GraphConsumers {
protected:
    HostileGraphs() {
        texts_.assign(hostileTexts.begin(), hostileTexts.end());
        texts_.push_back(longHostileText());
        texts_.insert(texts_.end(), {"interface", "database", "«x»", "“x”", "‘x’", "$", "a\xEF\xBF\xBF"});
        model_.setName("🙂"); // a title without a letter
        for (const std::string& text : texts_) {
            addClass(logical_, text);
        }
    }
    /// The lines of a class whose texts are all the same.
    static std::vector<std::string> linesOf(const std::string& text) {
        const std::string value = text.empty() ? "" : " = " + shown(text);
        const std::string name = shown(text);
        return {name, "+" + name + " : " + name + value, "+" + name + "(" + name + ") : " + name};
    }

    KelModel model_;
    KelDesignPackage& logical_ = addPackage(model_, "L");
    std::vector<std::string> texts_;
};

TEST_F(HostileGraphs, AreShownAsTheyAre) {
    for (const auto& [format, ending, program] :
         {std::tuple{"plantuml", ".puml", "plantuml"}, std::tuple{"dot", ".dot", "dot"}}) {
        if (!has(program)) {
            return rose::test::skipWithout(std::string(program) + " is not installed");
        }
        put(std::string("hostile") + ending, writtenAs(format, model_));
        draw(ending);
        const std::string texts = textsOf(get("hostile.svg"));
        for (const std::string& text : texts_) {
            for (const std::string& line : linesOf(text)) {
                EXPECT_NE(texts.find("\n" + line + "\n"), std::string::npos) << format << ": " << line;
            }
            const std::string name = shown(text);
            EXPECT_GE(countOf(name, texts), text.empty() ? 7U : 12U)
                << format << ": " << name; // ends, labels, stereotypes, packages, notes
        }
        if (HasFailure()) {
            std::puts(texts.c_str());
        }
    }
}

/// Mermaid is not in Debian, so its rules are checked: entities for all that its parser acts on.
TEST_F(HostileGraphs, AreEntitiesInMermaid) {
    const std::string written = writtenAs("mermaid", model_);
    const std::regex entity("#(\\d+);");
    const std::string texts = decoded(written, entity, 10);
    for (const std::string& text : texts_) {
        const std::vector<std::string> lines = linesOf(text);
        EXPECT_NE(texts.find("[\"" + lines[0] + "\"] {\n"), std::string::npos) << text;
        EXPECT_NE(texts.find("\n    " + lines[1] + "\n"), std::string::npos) << text;
    }
    for (const auto& [name, line] : {std::pair{"a\x01", "\ntitle: \"a\uFFFD\"\n"}, // in place of HTML:
                                     std::pair{"<b>b</b>", "\nnote \"#60;b#62;b#60;/b#62;\"\n"}}) {
        model_.setName(name);
        EXPECT_NE(writtenAs("mermaid", model_).find(line), std::string::npos) << name;
    }
    std::size_t statements = 0;
    const std::regex statement(
        R"((---|title: "🙂"|config:|  class:|    hideEmptyMembersBox: true|classDiagram|direction TB| *\}|%% .*)"
        R"(|namespace [^"#;:{}<>()`*$%~|&@^ ]+ \{|  class c[0-9a-f]+\["[^"{}<>\[\]`%]+"\] \{|)"
        R"(    (<<[^"{}<>]+>>|[+][^"{}<>\[\]`%$*~:]+( : |\()[^"{}<>\[\]`%$*~:]+)|)"
        R"(note for c[0-9a-f]+ "([^"{}<>%]|<br/>)+"|)"
        R"(c[0-9a-f]+( "[^"{}<>%]+")? -- ("[^"{}<>%]+" )?c[0-9a-f]+( : [^"{}<>%:;]*)?))");
    std::istringstream lines(std::regex_replace(written, entity, "x")); // leaves nothing but plain characters
    for (std::string line; std::getline(lines, line); ++statements) {
        EXPECT_TRUE(std::regex_match(line, statement)) << line;
    }
    EXPECT_GT(statements, 7 * texts_.size());
}

TEST_F(GraphConsumers, DrawEveryClassAndRelationship) {
    std::vector<std::filesystem::path> models;
    for (const char* root : {PETAL_EXAMPLES, PETAL_REAL_MODELS}) {
        if (*root != '\0' && std::filesystem::exists(root)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
                if (entry.path().extension() == ".mdl") {
                    models.push_back(entry.path());
                }
            }
        }
    }
    std::ranges::sort(models);
    ASSERT_GE(models.size(), 2U);
    for (const auto& [format, ending, program] :
         {std::tuple{"plantuml", ".puml", "plantuml"}, std::tuple{"dot", ".dot", "dot"}}) {
        if (!has(program)) {
            return rose::test::skipWithout(std::string(program) + " is not installed");
        }
        for (std::size_t at = 0; at < models.size(); ++at) {
            const ImportedModel imported = ImportedModel::ofFile(models[at]);
            put(std::to_string(at) + ending, writtenAs(format, imported.model));
            put(std::to_string(at) + ".mmd", writtenAs("mermaid", imported.model));
        }
        draw(ending);
        for (std::size_t at = 0; at < models.size(); ++at) {
            const std::string mermaid = get(std::to_string(at) + ".mmd");
            const std::string svg = get(std::to_string(at) + ".svg");
            const bool isDot = std::string_view(format) == "dot";
            const std::regex box("\n *class c[0-9a-f]+\\[");
            const std::regex edge("\nc[0-9a-f]+ (\"[^\"]*\" )?[<|o*]*(--|\\.\\.)");
            const auto matches = [](const std::string& text, const std::regex& pattern) {
                return std::distance(std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator());
            };
            EXPECT_EQ(
                matches(svg, isDot ? std::regex("<title>c[0-9a-f]+</title>") : std::regex("\nclass c[0-9a-f]+-->")),
                matches(mermaid, box))
                << models[at] << " " << format;
            const std::string drawnEdge = isDot ? "<title>c[0-9a-f]+&#45;&gt;c[0-9a-f]+</title>"
                                                : "\n(reverse )?link c[0-9a-f]+ to c[0-9a-f]+-->\n*<path";
            EXPECT_EQ(matches(svg, std::regex(drawnEdge)), matches(mermaid, edge)) << models[at] << " " << format;
        }
    }
}

/// A model that an import would not make.
class BadModel {
public:
    BadModel() {
        for (int ends = 0; ends < 4; ++ends) {
            auto& association = addElement<KelAssociation>(package, "");
            for (int made = 0; made < ends; ++made) {
                addRole(association, "r", made == 1 ? nullptr : &first);
            }
        }
        addGeneralization(first, first);
        addGeneralization(first, second);
        addGeneralization(second, first);
        addGeneralization(second, first); // again
        addElement<KelRealization>(package, "").addRealizationClass(&first);
        auto& dependency = addElement<KelDependency>(package, "");
        dependency.addClientClass(&first);
        dependency.addSupplierClass(&outside);
        first.addNote(note(" \n"));
        for (int count = 0; count < 2; ++count) {
            package.addDiagram(named<KelClassDiagram>("same"));
        }
        deepest = &static_cast<KelDesignPackage&>(addNested(model, 10'000));
        addElement<KelClass>(*deepest, "deep");
        addElement<KelClass>(static_cast<KelDesignPackage&>(*deepest->getParentPackage()), "\xE9");
    }

    KelModel model;
    KelClass outside;
    KelDesignPackage& package = addPackage(model, "");
    KelClass& first = addElement<KelClass>(package, "");
    KelClass& second = addElement<KelClass>(package, "");
    KelDesignPackage* deepest = nullptr;

private:
    void addGeneralization(KelClass& subtype, KelClass& supertype) {
        auto& generalization = addElement<KelGeneralization>(package, "");
        generalization.addSubtypeClass(&subtype);
        generalization.addSupertypeClass(&supertype);
    }
};

TEST_F(GraphConsumers, TakeBadModels) {
    const BadModel bad;
    const KelModel empty;
    for (const char* format : formats) {
        const std::string text = writtenAs(format, bad.model);
        EXPECT_NE(text.find("4 classes, 2 generalizations\n"), std::string::npos) << format;
        for (const char* told : {"4 associations without two classes", "2 relations without two classes",
                                 "1 generalization of a class to itself", "1 repeated generalization",
                                 "2 class diagrams", "1 blank note"}) {
            EXPECT_NE(text.find(std::string("Left out: ") + told), std::string::npos) << format << ": " << told;
        }
        EXPECT_EQ(countOf("(unnamed)\"", replaced(replaced(text, "#40;", "("), "#41;", ")")) > 0, true) << format;
        put(std::string("bad.") + format, text);
        put(std::string("empty.") + format, writtenAs(format, empty));
    }
    EXPECT_EQ(writtenAs("mermaid", empty), "---\nconfig:\n  class:\n    hideEmptyMembersBox: true\n---\n"
                                           "classDiagram\ndirection TB\n%% 0 classes\n");
    for (const char* command :
         {"dot -Tcanon bad.dot empty.dot",
          "plantuml -syntax <bad.plantuml | grep CLASS && plantuml -syntax <empty.plantuml | grep CLASS"}) {
        if (!has(std::string(command).substr(0, std::string_view(command).find(' ')))) {
            return rose::test::skipWithout(std::string(command) + " cannot be run");
        }
        EXPECT_EQ(std::system(("cd " + folder.string() + " && (" + command + ") >log 2>&1").c_str()), 0) << get("log");
    }
}

/// Two packages with a diagram each; every class inherits from the one before it.
class Chain {
public:
    Chain() {
        const KelClass* before = nullptr;
        for (const char* name : {"A", "B"}) {
            KelDesignPackage& package = addPackage(logical, name);
            auto* diagram = named<KelClassDiagram>("Main");
            package.addDiagram(diagram);
            for (int made = 0; made < 5; ++made) {
                auto& one = addElement<KelClass>(package, (name + std::to_string(made)).c_str());
                one.addAttribute(named<KelAttribute>("open"));
                one.addAttribute(named<KelAttribute>("hidden"));
                one.getAttribute("hidden", nullptr)->visibility = 2;
                one.addOperation(named<KelOperation>("run"));
                diagram->addModelElement(&one);
                if (before != nullptr) {
                    auto& generalization = addElement<KelGeneralization>(package, "");
                    generalization.addSubtypeClass(&one);
                    generalization.addSupertypeClass(const_cast<KelClass*>(before));
                    diagram->addModelElement(&generalization);
                }
                before = &one;
            }
        }
        logical.addDiagram(named<KelClassDiagram>("Empty"));
    }

    KelModel model;
    KelDesignPackage& logical = addPackage(model, "Logical View");
};

std::string headings(const std::string& markdown) {
    std::string found;
    std::istringstream lines(markdown);
    for (std::string line; std::getline(lines, line);) {
        found += line.starts_with("## ") || line.ends_with(".") ? line + "\n" : "";
    }
    return found;
}

TEST(Graphs, ShowWhatTheOptionsPick) {
    const Chain chain;
    const auto markdown = [&](const std::vector<std::string>& settings) {
        return writtenAs("mermaid", chain.model, settings, nullptr, ".md");
    };
    EXPECT_EQ(headings(markdown({})), "## Main\nLogical View\\:\\:A\\:\\:Main: 5 classes, 4 generalizations.\n"
                                      "## Main\nLogical View\\:\\:B\\:\\:Main: 5 classes, 4 generalizations.\n");
    EXPECT_NE(markdown({}).find("1 class diagram without classes"), std::string::npos);
    EXPECT_NE(markdown({}).find("1 relationship on no diagram"), std::string::npos); // from B to A
    EXPECT_EQ(headings(markdown({"diagram=Logical View::B::Main", "max-classes=3"})),
              "## Main \\(part 1 of 2\\: B\\)\nLogical View\\:\\:B\\:\\:Main: 3 classes, 2 generalizations.\n"
              "## Main \\(part 2 of 2\\: B\\)\nLogical View\\:\\:B\\:\\:Main: 2 classes, 1 bare class of elsewhere, "
              "2 generalizations.\n");
    EXPECT_EQ(headings(markdown({"scope=packages"})),
              "## A\nLogical View\\:\\:A: 5 classes, 1 bare class of elsewhere, 5 generalizations.\n"
              "## B\nLogical View\\:\\:B: 5 classes, 1 bare class of elsewhere, 5 generalizations.\n");
    const std::string one = writtenAs("dot", chain.model, {"package=A", "members=public", "operations=false"});
    EXPECT_NE(one.find("// 5 classes, 1 bare class of elsewhere, 5 generalizations\n"), std::string::npos);
    EXPECT_EQ(countOf("+open<", one), 5U);
    EXPECT_EQ(countOf("hidden", one) + countOf("run", one), 0U);
    EXPECT_EQ(countOf("open", writtenAs("plantuml", chain.model, {"members=none"})), 0U);
    const std::string blocks = writtenAs("plantuml", chain.model, {"scope=diagrams", "direction=LR"});
    EXPECT_NE(blocks.find("@startuml Main\n"), std::string::npos);
    EXPECT_NE(blocks.find("@startuml Main_2\n"), std::string::npos);
    for (const auto& [settings, text] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"diagram=None"},
              "there is no class diagram 'None'; the names of class diagrams are 'Logical View::Empty', "
              "'Logical View::A::Main', 'Logical View::B::Main'"},
             {{"package=None"},
              "there is no package 'None'; the names of packages are 'Logical View', 'Logical View::A', "
              "'Logical View::B'"},
             {{"diagram=Empty"}, "no class diagram of that name shows a class"},
             {{"diagram=Main", "scope=model"}, "'diagram' picks class diagrams, so the scope must be 'diagrams'"},
             {{"diagram=Main"},
              "these options give 2 pictures, and a file of Mermaid holds one; a Markdown file (NAME.md) "
              "holds any number"}}) {
        try {
            (void)writtenAs("mermaid", chain.model, settings);
            ADD_FAILURE() << text;
        } catch (const exporter::WrongOption& wrong) {
            EXPECT_EQ(wrong.what(), text);
        }
    }
}

TEST(Graphs, AreSplitBeforeMermaidRefusesThem) {
    KelModel model;
    KelDesignPackage& package = addPackage(model, "P");
    auto& hub = addElement<KelClass>(package, "hub");
    for (int made = 0; made < 3000; ++made) {
        auto& user = addElement<KelClass>(package, ("user" + std::to_string(made)).c_str());
        auto& dependency = addElement<KelDependency>(package, "uses");
        dependency.addClientClass(&user);
        dependency.addSupplierClass(&hub);
    }
    const std::string text = writtenAs("mermaid", model, {"max-classes=100000"}, nullptr, ".md");
    std::size_t at = 0;
    std::size_t parts = 0;
    for (std::size_t start = text.find("```mermaid\n"); start != std::string::npos;
         start = text.find("```mermaid\n", at)) {
        at = text.find("\n```\n", start);
        EXPECT_LE(at - start, 48'000U);
        ++parts;
    }
    EXPECT_GE(parts, 4U);
    EXPECT_LE(parts, 8U);
    EXPECT_EQ(countOf(" : uses\n", text), 3000U);
    const std::string whole = writtenAs("mermaid", model);
    EXPECT_EQ(countOf(" : uses\n", whole), 3000U);
    EXPECT_NE(whole.find("%% This picture may be too large for a browser: "), std::string::npos);
}

} // namespace
