#pragma once

#include <cstddef>

/// Takes a match of the scanner that judges; returns how many of the bytes behind it are consumed with it.
std::size_t flexJudgeMatch(int rule, const char* text, std::size_t length);

#define FLEX_MATCHED(rule)                                                                                             \
    for (std::size_t more = flexJudgeMatch(rule, yytext, static_cast<std::size_t>(yyleng)); more > 0; --more) {        \
        yyinput();                                                                                                     \
    }
#define FLEX_SKIPPED FLEX_MATCHED(0)
