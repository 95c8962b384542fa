#include "support/NotationEvents.h"

#include <gtest/gtest.h>

namespace {

using notation::test::damagesOf;
using notation::test::eventsOf;
using namespace std::string_view_literals;

struct Row {
    std::string_view text;
    std::string_view events;
};

TEST(Events, OfSoundTexts) {
    constexpr Row rows[] = {
        {"", ""},
        {" \t\v\f\n", ""},
        {"(object Petal)", "<object Petal >"},
        {"\xEF\xBB\xBF(object Petal)", "<object Petal >"},
        {"(object A)(object B)", "<object A > <object B >"},
        {"(object View \"Class\" \"A::B\" @12)", "<object View 'Class' 'A::B' @12 >"},
        {"(object View @12 \"A\" k 1)", "<object View 'A' @12 k=integer:1 >"},
        {"(object View\n|two\n|lines\n k 1)", "<object View 'two\nlines' k=integer:1 >"},
        {"(object A k \"\")", "<object A k=text: >"},
        {R"((object A k "a\"b\\"))", R"(<object A k=text:a\"b\\ >)"},
        {"(object A k \"(object B\" l \"|x\")", "<object A k=text:(object B l=text:|x >"},
        {"(object A k 12 l -3 m +4)", "<object A k=integer:12 l=integer:-3 m=integer:+4 >"},
        {"(object A k 0.25 l -1e-5 m .5)", "<object A k=real:0.25 l=real:-1e-5 m=real:.5 >"},
        {"(object A k @7 l @ m @x)", "<object A k=reference:7 l=word:@ m=word:@x >"},
        {"(object A k TRUE l FALSE m Foo n 1.2.3)", "<object A k=flag:TRUE l=flag:FALSE m=word:Foo n=word:1.2.3 >"},
        {"(object A k (10, -20) l (1,2))", "<object A k=location:10,-20 l=location:1,2 >"},
        {"(object A k (list L))", "<object A k=<list L > >"},
        {"(object A k (list\n(object B)))", "<object A k=<list <object B > > >"},
        {"(object A k (list L \"a\" 5 @3 TRUE (1, 2)))",
         "<object A k=<list L text:a integer:5 reference:3 flag:TRUE location:1,2 > >"},
        {"(object A k (value Text \"x\"))", "<object A k=<value Text text:x > >"},
        {"(object A k (value Text \n|x\n|\n|y\n))", "<object A k=<value Text line:x//y > >"},
        {"(object A k (\"C_Set\" 62))", "<object A k=<group text:C_Set integer:62 > >"},
        {"(object A k (object B l 1) m 2)", "<object A k=<object B l=integer:1 > m=integer:2 >"},
        {"(object A k \n|one \"x\n|  |two\n\n l 1)", "<object A k=line:one \"x/  |two l=integer:1 >"},
        {"(object A k \n  |one\n  |two\n)", "<object A k=line:one/two >"},
        {"(object A k\n|one\n\nl\n|two\n)", "<object A k=line:one l=line:two >"},
        {"(object A \xD6\xD0 \"\xCE\xC4\")", "<object A \xD6\xD0=text:\xCE\xC4 >"},
        {"# all\n(object A // rest\n ; line\n k 1 # (\n)", "<object A k=integer:1 >"},
        {"(object A k \"# no //comment\" l /x)", "<object A k=text:# no //comment l=word:/x >"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(eventsOf(row.text), row.events) << row.text;
        EXPECT_EQ(damagesOf(row.text), std::vector<std::string>{}) << row.text;
    }
}

TEST(Events, LinesEndAsTheFirstOneDoesAndABackslashMayStandBeforeTheClosingQuote) {
    constexpr Row rows[] = {
        {"(object A\r\n k\r\n|a\r\n|b\r\n l 1)\r\n", "<object A k=line:a/b l=integer:1 >"},
        {"(object A\r k\r|a\r|b\r l 1)\r", "<object A k=line:a/b l=integer:1 >"},
        {"(object A\n k\n|a\rb\r\n l \"x\ry\"\r)\n", "<object A k=line:a\rb l=text:x\ry >"},
        {"(object A\n k \"C:\\dir\\\"\n l 1)", "<object A k=text:C:\\dir\\ l=integer:1 >"},
        {"(object A\n l (list L \"\x95\\\" ))\n(object B)", "<object A l=<list L text:\x95\\ > > <object B >"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(eventsOf(row.text), row.events) << row.text;
    }
}

TEST(Events, DamageIsToldOnceAndReadingGoesOn) {
    constexpr Row rows[] = {
        // texts
        {"(object A\n k \"abc\n l 1)", "<object A !unclosedText k=text:abc l=integer:1 >"},
        {"(object A k \"abc)\n(object B)", "<object A !unclosedText k=text:abc > <object B >"},
        {"(object A k \"f(x) )\n(object B)", "<object A !unclosedText k=text:f(x) > <object B >"},
        {"(object A k \"f(x)\n l 1)", "<object A !unclosedText k=text:f(x) l=integer:1 >"},
        {"(object A k \"f(x\n l 1)", "<object A !unclosedText k=text:f(x l=integer:1 >"},
        {"(object A \"n\n k 1)", "<object A 'n' !unclosedText k=integer:1 >"},
        {"(object A k \"a\0b\0c\" l\n|d\0\n)"sv, "<object A !nulInText k=text:a\0b\0c !nulInText l=line:d\0 >"sv},
        {"\1\2(object A\0k 1\x1A)"sv, "!controlBytes <object A k=integer:1 >"},
        // words out of place
        {"x y (object A) \"z\" 1, (object B)", "!strayText <object A > !strayText <object B >"},
        {"(object A k 1, l 2)", "<object A k=integer:1 !strayComma l=integer:2 >"},
        {"(object\n k 1)", "<object !objectWithoutKind k=integer:1 >"},
        {"(obect A\n k 1)", "<group obect !unknownConstruct word:A word:k integer:1 >"},
        {"(object A k 1 2 (list L))", "<object A k=integer:1 integer:2 !unnamedValue <list L !unnamedValue > >"},
        {"(object A k\n l 1\n m)", "<object A k=nothing: !noValue l=integer:1 m=nothing: !noValue >"},
        {"(object A k (1, 2, 3) l (4) m (5 6) n 7)",
         "<object A k=location:1,2 !badLocation l=location:4, !badLocation m=location:5,6 !badLocation n=integer:7 >"},
        {"(object A k (1, 2\n l 3)", "<object A k=location:1,2 !badLocation l=integer:3 >"},
        // parentheses, with indentation and without
        {"(object A) ) ) (object B)", "<object A > !surplusClose <object B >"},
        {"(object Petal\n v 42\n(object Design\n a 1)", "<object Petal v=integer:42 !missingClose >? <object Design "
                                                        "a=integer:1 >"},
        {"(object A l (list L (object B p 1 (object C)) q 3)",
         "<object A l=<list L <object B p=integer:1 !missingClose >? <object C > > q=integer:3 >"},
        {"(object A l (list L (object B) q 3)", "<object A l=<list L <object B > !missingClose >? q=integer:3 >"},
        {"(object A\n  l (list L\n    (object B\n      f (object F\n        s 1)\n    (object C))\n  q 3)",
         "<object A l=<list L <object B f=<object F s=integer:1 > !missingClose >? <object C > > q=integer:3 >"},
        {"(object A\n  l (list L\n    (object B\n      p 1))\n    (object C))\n  q 3)\n(object D)",
         "<object A l=<list L <object B p=integer:1 > > !surplusClose <list? <object C > > q=integer:3 > <object D >"},
        {"(object A\n  l (list L\n    (object B\n      f (object F))\n      p 2)\n    (object C))\n  q 3)",
         "<object A l=<list L <object B f=<object F > > !surplusClose <object? p=integer:2 > <object C > > "
         "q=integer:3 >"},
        {"(object A\n  l (list L\n    (object B\n      v (value T \"x\"\n      p 2)\n    (object C))\n  q 3)",
         "<object A l=<list L <object B v=<value T text:x !missingClose >? p=integer:2 > <object C > > q=integer:3 >"},
        // ends too early
        {"(", "<group !truncated >?"},
        {"(object A k", "<object A k=nothing: !truncated >?"},
        {"(object A k \"ab", "<object A k=text:ab !truncated >?"},
        {"(object A k (1,", "<object A k=location:1, !truncated >?"},
        {"(object A l (list L (object B", "<object A l=<list L <object B !truncated >? >? >?"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(eventsOf(row.text), row.events) << row.text;
    }
}

TEST(Events, DamageIsToldInWordsAndWithItsPlace) {
    notation::MemorySource source("(object A\n\tk (list L\n\t    (object B\n");
    notation::Reader reader(source);
    while (reader.next() && reader.event().kind != notation::EventKind::damage) {
    }
    EXPECT_EQ(notation::damageLine(*reader.event().damage),
              "line 4, column 1: the file ends early: 3 closing parentheses are missing; the innermost open construct "
              "starts at line 3, column 6");
    EXPECT_EQ(damagesOf("(object A\r\n  k \"x\r\n  l 1 2)"),
              (std::vector<std::string>{"2:5 unclosedText", "3:7 unnamedValue"}));
}

} // namespace
