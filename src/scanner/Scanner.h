#pragma once

#include <cstdio>

/// The scanner: recognises keywords anywhere in a text and makes each rule act (RuleTable.h).
///
/// Its state and its input are those of the process, without a lock: one scan at a time. The builder's exceptions pass
/// through. Conditions of the input layer end the process (`FatalCondition`). Time is proportional to the input.
namespace rose {

/// Scans `stream` from its current position to its end and builds the model from it; returns true. The stream stays
/// open and at its end. An earlier scan leaves nothing behind, even if an exception ended it.
bool RoseLexImport(std::FILE* stream);

/// Scans the input from its current position to its end, calling the builder for every keyword in the order of the
/// file; returns 0. The stream is `yyin`. PRECONDITION: no action is running.
int yylex();

/// Makes rule `number` act on the current match if its guards permit it.
void dispatch(int number);

} // namespace rose
