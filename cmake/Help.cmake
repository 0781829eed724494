# The book of each language and the pages as plain HTML, beside the Windows programs.
foreach(program pandoc chmcmd)
  find_program(HELP_${program} NAMES ${program})
  if(NOT HELP_${program})
    message(FATAL_ERROR "${program} is missing; ./test installs it (pandoc, fp-utils)")
  endif()
endforeach()
file(GLOB_RECURSE helpSources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/help/*")
set(helpMaker "${CMAKE_SOURCE_DIR}/tools/manual")
set(helpMade "${CMAKE_BINARY_DIR}/help.stamp")
add_custom_command(
  OUTPUT "${helpMade}"
  COMMAND "${helpMaker}" --out "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
  COMMAND "${CMAKE_COMMAND}" -E touch "${helpMade}"
  DEPENDS "${helpMaker}" "${CMAKE_SOURCE_DIR}/src/shell/HelpPages.h"
          "${CMAKE_SOURCE_DIR}/tools/help_source.py"
          "${CMAKE_SOURCE_DIR}/tools/help_output.py" "${CMAKE_SOURCE_DIR}/tools/help_book.py"
          ${helpSources}
  VERBATIM)
add_custom_target(help-books ALL DEPENDS "${helpMade}")
