# argument_parser_manual(TARGET <program> [NAME <name>] [TEXTS <file>] [DATE <date>] [SECTION <n>] [EACH] [MARKDOWN])
#
# Writes the manual page of a program, <name>.<n> in the current build directory, with the target "all": from its
# declarations and from what only people can write (see Manual.h for the form of TEXTS). NAME is the name of its root
# command, by default that of the target. EACH makes a page for each command, MARKDOWN a reference <name>.md as well. DATE is "2026-11-23"; without one it is the day of the build, or
# what SOURCE_DATE_EPOCH says.
function(argument_parser_manual)
  cmake_parse_arguments(PARSE_ARGV 0 manual "EACH;MARKDOWN" "TARGET;NAME;TEXTS;DATE;SECTION" "")
  if(NOT manual_NAME)
    set(manual_NAME ${manual_TARGET})
  endif()
  if(NOT manual_SECTION)
    set(manual_SECTION 1)
  endif()
  set(options --section ${manual_SECTION})
  if(manual_DATE)
    list(APPEND options --date ${manual_DATE})
  endif()
  if(manual_TEXTS)
    cmake_path(ABSOLUTE_PATH manual_TEXTS)
    list(APPEND options --texts ${manual_TEXTS})
  endif()
  if(manual_EACH)
    list(APPEND options --each)
  endif()
  set(page ${CMAKE_CURRENT_BINARY_DIR}/${manual_NAME}.${manual_SECTION})
  set(dump ${CMAKE_CURRENT_BINARY_DIR}/${manual_NAME}.dump.json)
  set(outputs ${page})
  set(reference)
  if(manual_MARKDOWN)
    set(reference COMMAND ArgumentParser::argument-parser-manual --markdown ${options} ${dump})
    list(APPEND outputs ${CMAKE_CURRENT_BINARY_DIR}/${manual_NAME}.md)
  endif()
  add_custom_command(OUTPUT ${outputs}
    COMMAND $<TARGET_FILE:${manual_TARGET}> --experimental-dump-help > ${dump}
    COMMAND ArgumentParser::argument-parser-manual ${options} ${dump}
    ${reference}
    DEPENDS ${manual_TARGET} ArgumentParser::argument-parser-manual ${manual_TEXTS}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} VERBATIM)
  add_custom_target(${manual_TARGET}_manual ALL DEPENDS ${outputs})
endfunction()
