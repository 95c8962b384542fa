# embed_texts(TARGET FUNCTION FILE...): adds to the target a source that defines
#   std::span<const text::Embedded> FUNCTION();
# which returns the files, in this order, each with its name without ending and its hash. FUNCTION is qualified by its
# namespace.
# As a script (-DOUTPUT=... -DFUNCTION=... -DFILES=...) it writes that source.
if(CMAKE_SCRIPT_MODE_FILE)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  # Sets VARIABLE to the SHA-256 of the file, in base64.
  function(hash_in_base64 file variable)
    file(SHA256 ${file} hex)
    set(result "")
    foreach(start RANGE 0 60 6)
      string(SUBSTRING ${hex}0000 ${start} 6 group) # the last group lacks a byte
      foreach(shift 18 12 6 0)
        math(EXPR digit "(0x${group} >> ${shift}) & 63")
        string(SUBSTRING ${digits} ${digit} 1 digit)
        string(APPEND result ${digit})
      endforeach()
    endforeach()
    string(SUBSTRING ${result} 0 43 result)
    set(${variable} "${result}=" PARENT_SCOPE)
  endfunction()

  set(rows "")
  set(number 0)
  set(texts "")
  foreach(file ${FILES})
    file(READ ${file} hex HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
    string(REGEX REPLACE "((0x..,){24})" "\\1\n    " bytes "${bytes}")
    get_filename_component(name ${file} NAME_WE)
    string(APPEND texts "constexpr unsigned char text${number}[] = {\n    ${bytes}};\n")
    hash_in_base64(${file} hash)
    string(APPEND rows "    {\"${name}\", {reinterpret_cast<const char*>(text${number}), sizeof text${number}}, \"${hash}\"},\n")
    math(EXPR number "${number} + 1")
  endforeach()
  string(REGEX REPLACE "::[^:]*$" "" space ${FUNCTION})
  string(REGEX REPLACE "^.*::" "" name ${FUNCTION})
  file(WRITE ${OUTPUT} "#include \"text/Embedded.h\"\n\nnamespace {\n\n${texts}\nconst text::Embedded rows[] = {\n${rows}};\n\n} // namespace\n\nnamespace ${space} {\n\nstd::span<const text::Embedded> ${name}();\nstd::span<const text::Embedded> ${name}() {\n    return rows;\n}\n\n} // namespace ${space}\n")
  return()
endif()

set(embedScript ${CMAKE_CURRENT_LIST_FILE})

function(embed_texts target function)
  string(REPLACE "::" "_" name ${function})
  set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded/${name}.cpp)
  add_custom_command(OUTPUT ${source}
    COMMAND ${CMAKE_COMMAND} "-DOUTPUT=${source}" "-DFUNCTION=${function}" "-DFILES=${ARGN}" -P ${embedScript}
    DEPENDS ${ARGN} ${embedScript} VERBATIM)
  target_sources(${target} PRIVATE ${source})
endfunction()
