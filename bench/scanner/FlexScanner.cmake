# Scanners that flex makes of the rule table. Without flex there are none: FLEX_PROGRAM is false.
#
#   add_flex_scanner(<library> <header>)
#
# makes the library that FlexScanner.h declares; what a match does is up to the macros of <header>.

include_guard(GLOBAL)
find_program(FLEX_PROGRAM flex)

function(add_flex_scanner library header)
  set(folder ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  if(NOT TARGET flex_rules)
    add_executable(flex_rules ${folder}/FlexRules.cpp)
  endif()
  set(rules ${CMAKE_CURRENT_BINARY_DIR}/${library}.l)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${library}.cpp)
  add_custom_command(
    OUTPUT ${source}
    COMMAND flex_rules > ${rules}
    COMMAND ${FLEX_PROGRAM} -Cf -o ${source} ${rules}
    DEPENDS flex_rules
    VERBATIM)
  add_library(${library} STATIC ${source})
  target_include_directories(${library} PUBLIC ${folder})
  # Not our code: its warnings are nobody's.
  target_compile_options(${library} PRIVATE -O2 -w -include ${header})
endfunction()
