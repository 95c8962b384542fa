# The scanner that flex makes of the rule table, to judge the matcher by: the library `flex_judge`, which the scanner's
# tests link.

find_program(FLEX_PROGRAM flex REQUIRED)

add_executable(flex_rules ${CMAKE_CURRENT_LIST_DIR}/FlexRules.cpp)
target_include_directories(flex_rules PRIVATE ${PROJECT_SOURCE_DIR}/src)

set(flex_judge_rules ${CMAKE_CURRENT_BINARY_DIR}/FlexJudgeScanner.l)
set(flex_judge_source ${CMAKE_CURRENT_BINARY_DIR}/FlexJudgeScanner.cpp)
add_custom_command(
  OUTPUT ${flex_judge_source}
  COMMAND flex_rules > ${flex_judge_rules}
  COMMAND ${FLEX_PROGRAM} -o ${flex_judge_source} ${flex_judge_rules}
  DEPENDS flex_rules
  VERBATIM)

# Not our code: its warnings are nobody's.
add_library(flex_judge STATIC ${flex_judge_source})
target_include_directories(flex_judge PRIVATE ${CMAKE_CURRENT_LIST_DIR})
target_compile_options(flex_judge PRIVATE -w)
