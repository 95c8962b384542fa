# The scanner that flex makes of the rule table, to judge the matcher by: the library `flex_judge`, and in
# ROSE_FLEX_JUDGE_TESTS the tests that need it. Without flex there is neither.

set(ROSE_FLEX_JUDGE_TESTS)
find_program(FLEX_PROGRAM flex)
if(NOT FLEX_PROGRAM)
  message(STATUS "flex was not found: the scanner's tests do without it as a judge")
  return()
endif()

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

set(ROSE_FLEX_JUDGE_TESTS ${CMAKE_CURRENT_LIST_DIR}/flex_judge_test.cpp)
