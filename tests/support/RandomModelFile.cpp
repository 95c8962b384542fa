#include "support/RandomModelFile.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr int deepestPackage = 6; // in parentheses

/// One rule of the grammar: alternatives with '|' between them. <rule> stands for an alternative of that rule, <rule*4>
/// for none to four of them, and % with a letter for a number (see `number`).
struct Rule {
    std::string_view name;
    std::string_view text;
    std::string_view ofWildFiles; // empty: the same
};

constexpr Rule rules[] = {
    {"unused", "||(object Class_Category \"Use Case View\"\n<content>)\n", ""}, // nothing of it is imported
    {"logical", "(object Class_Category \"Logical View\"\n<content>)\n", ""},
    {"package", "(object Class_Category \"P%p\"\n<content>)\n", ""},
    // A diagram stays current after its package, and no role is bound while there is one.
    {"content", "quid \"%q\"\nlogical_models \t(list unit_reference_list\n<element*8><package*2>)\n<diagrams>",
     "quid \"%q\"\nlogical_models \t(list unit_reference_list\n<element*8><package*2><element*4>)\n<diagrams>"},
    {"diagrams", "logical_presentations \t(list unit_reference_list\n<diagram*2>)\n", ""},
    {"element", "<class>|<class>|<association>|<association>|<enumeration>", ""},
    {"class",
     "(object <classKind> \"<className>\"\nquid \"%q\"\n<stereotype><parameter*2><attribute*4><operation*2>"
     "<relationship*2>)\n",
     ""},
    {"classKind", "Class|Class|Class|Parameterized_Class|Instantiated_Class|Class_Utility|Metaclass", ""},
    {"stereotype", "||||stereotype \"Interface\"\n|stereotype \"entity\"\n", ""},
    // A class that becomes a type takes the associations to it along.
    {"enumeration", "(object Class \"<enumerationName>\"\n(value Text \t\"{<literals>}\")\n)\n", ""},
    {"enumerationName", "Colour", "Colour|<className>"},
    {"literals", "Red|Red,Green=2,Blue='b'|Red,Green=2,Blue='b'|Red,Green=2,Blue='b'", ""},
    {"attribute",
     "(object ClassAttribute \"<memberName>\"\n<typed>initv \t\"0\"\nexportControl \t\"<visibility>\"\n"
     "Containment \t\"<containment>\"\n)\n",
     ""},
    {"typed", "|type \t\"<type>\"\n|type \t\"<type>\"\n", ""},
    {"operation", "(object Operation \"<memberName>\"\n<parameter*2><result>)\n", ""},
    {"result", "|result \t\"<type>\"\n|result \t\"<type>\"\n", ""},
    {"parameter", "(object Parameter \"<memberName>\"\n<typed>)\n", ""},
    {"relationship", "(object <relation>_Relationship\nlabel \t\"relates\"\n<supplier>)\n", ""},
    {"relation", "Inheritance|Realize|Uses", ""},
    {"supplier", "<named>|<named>|<named>|<named>|", ""},
    {"named", "supplier \t\"<className>\"\n", ""},
    {"association", "(object Association \"<associationName>\"\nquid \t\"<associationQuid>\"\n<roles><linkClass>)\n",
     ""},
    {"associationQuid", "%q|%q|%q|%q|%q|%q|%q|%a", ""},
    {"roles", "<role><role>", "<role*3>"},
    {"linkClass", "%1|%1|%1|%3AssociationClass \t\"<className>\"\n", ""},
    {"role", "(object Role \"<associationName>\"\n<named><keys><cardinality>)\n",
     "(object Role \"<associationName>\"\n<supplier><keys><cardinality><aggregate>)\n"},
    {"keys", "||keys \t(list class_attribute_list\n<attribute*3>)\n", ""},
    {"cardinality", "client_cardinality \t(value cardinality \"<range>\")\n", ""},
    {"aggregate", "|||is_aggregate \tTRUE\n", ""},
    {"diagram", "(object ClassDiagram \"Main\"\n%d<view*15>)\n", ""},
    {"view", "<classView>|<classView>|<relationView>|<associationView>|<note>", ""},
    {"classView", "(object ClassView \"Class\" \"Logical View::<known>\" @<classNumber>\n)\n", ""},
    {"classNumber", "%v|%v|%v|%v|%v|%w", ""},
    {"relationView", "(object <viewKind>View \"\" @%v\nclient \t@%w\nsupplier \t@%w\n)\n", ""},
    {"viewKind", "Inherit|Realize|Uses|Attach", ""},
    {"associationView",
     "(object AssociationViewNew \"<associationName>\" @%v\nquidu \t\"%b\"\n(object RoleView \"\" @%v\nParent_View "
     "\t@%u\n"
     "supplier \t@%w\n)\n)\n",
     ""},
    {"note", "(object NoteView @%v\nParent_View \t@%t\nlabel \t\"note %t\"\n)\n", ""},
    {"className", "<prefix><known>|<prefix><known>|<prefix><known>|<prefix><known>|<prefix><known>|<prefix><unknown>",
     ""},
    {"prefix", "|Logical View::P::", ""},
    {"known", "A|B|C|D|Order|Line", ""},
    {"unknown", "Actor|Later|Sales::Order", ""},
    {"memberName", "id|i|id2|name|key|", ""},
    {"type", "int|char[20]|char*|VARCHAR2(40)|NUMBER(10,2)|Order|Colour|double|boolean|void|DATE|Unknown|Actor|int[3]",
     ""},
    {"visibility", "Public|Protected|Private|Implementation", ""},
    {"containment", "By Value|By Reference|Unspecified", ""},
    {"range", "0..n|1..n|1..1|n|0..0", ""},
    {"associationName", "|$UNNAMED$1|owns|owns|has", ""},
};

} // namespace

RandomModelFile::RandomModelFile(unsigned int seed, Kind kind) : isSound_(kind == Kind::sound), random_(seed) {
    expand("<unused>");
    associationCount_ = 0;
    expand("<logical>");
}

void RandomModelFile::expandRule(std::string_view name) {
    const auto rule = std::ranges::find(rules, name, &Rule::name);
    if (rule == std::end(rules)) {
        throw std::logic_error("no rule " + std::string(name));
    }
    if (name == "package" && depth_ >= deepestPackage) {
        return;
    }
    std::string_view text = isSound_ || rule->ofWildFiles.empty() ? rule->text : rule->ofWildFiles;
    for (auto skipped = below(1 + static_cast<int>(std::ranges::count(text, '|'))); skipped > 0; --skipped) {
        text.remove_prefix(text.find('|') + 1);
    }
    expand(text.substr(0, text.find('|')));
}

void RandomModelFile::expand(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '<') {
            const std::string_view call = text.substr(at + 1, text.find('>', at) - at - 1);
            const std::size_t mark = call.find('*');
            const int times =
                mark == std::string_view::npos ? 1 : below(std::stoi(std::string(call.substr(mark + 1))) + 1);
            for (int time = 0; time < times; ++time) {
                expandRule(call.substr(0, mark));
            }
            at += call.size() + 1;
        } else if (text[at] == '%') {
            const int value = number(text[++at]);
            text_ += value >= 0 ? std::to_string(value) : "";
        } else {
            put(text[at]);
        }
    }
}

void RandomModelFile::put(char character) {
    if (text_.ends_with('\n')) {
        text_.append(static_cast<std::size_t>(depth_), '\t');
    }
    depth_ += character == '(' ? 1 : character == ')' ? -1 : 0; // those within texts are in pairs
    text_ += character;
}

/// A number for the text; -1 for a mark that writes none.
int RandomModelFile::number(char letter) {
    switch (letter) {
    case 'p':
        return ++packages_;
    case 'q':
        return ++quids_;
    case 'a': // of anything
        return below(quids_ + 1);
    case 'b': // of anything, or of nothing
        return below(quids_ + 20);
    case 'v':
        return ++views_;
    case 'w': // any on the diagram
        return firstView_ + below(views_ - firstView_ + 1);
    case 't':
        return views_;
    case 'u':
        return views_ - 1;
    case 'd':
        firstView_ = views_;
        return -1;
    default: // associations
        associationCount_ += letter - '0';
        return -1;
    }
}
