#pragma once

#include <cstddef>
#include <cstdio>

/// The scanner that flex makes of the rule table (FlexRules.cpp). Both run it to the end of their input; what a match
/// does is up to two macros: FLEX_MATCHED(rule), and FLEX_SKIPPED for a byte that no rule takes.
void flexScanText(const char* text, std::size_t length);
void flexScanFile(std::FILE* file);
