#pragma once

#include <cstddef>

/// Runs the scanner that flex made over a text. Defined in that scanner's source (FlexRules.cpp).
void flexJudgeScan(const char* text, std::size_t length);

/// Takes a match of that scanner; returns how many of the bytes behind it are consumed with it.
std::size_t flexJudgeMatch(int rule, const char* text, std::size_t length);

/// The action of every rule of that scanner.
#define FLEX_JUDGE_REPORT(rule)                                                                                        \
    for (std::size_t more = flexJudgeMatch(rule, yytext, static_cast<std::size_t>(yyleng)); more > 0; --more) {        \
        yyinput();                                                                                                     \
    }
