# What the Windows programs hold in addition to code: pictures, whose drawings become bitmaps here,
# the manifest, and the version.
enable_language(RC)
find_program(RSVG_CONVERT NAMES rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert is missing; ./test installs it (librsvg2-bin)")
endif()
set(pictures "${CMAKE_BINARY_DIR}/pictures")
set(maker "${CMAKE_SOURCE_DIR}/tools/pictures")
file(GLOB iconDrawings CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/assets/icons/*.svg")

add_custom_command(
  OUTPUT "${pictures}/icons.rc" "${pictures}/IconTable.h"
  COMMAND "${maker}" icons "${pictures}"
  DEPENDS "${maker}" "${CMAKE_SOURCE_DIR}/assets/icons" ${iconDrawings}
  VERBATIM)

add_custom_command(
  OUTPUT "${pictures}/zelvreg.ico"
  COMMAND "${maker}" program "${pictures}/zelvreg.ico"
  DEPENDS "${maker}" "${CMAKE_SOURCE_DIR}/assets/zelvreg.svg"
          "${CMAKE_SOURCE_DIR}/assets/zelvreg-small.svg"
  VERBATIM)

# The program looks for it beside itself.
set(animation "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/search.gif")
add_custom_command(
  OUTPUT "${animation}"
  COMMAND "${maker}" animation "${animation}"
  DEPENDS "${maker}" "${CMAKE_SOURCE_DIR}/assets/search.svg"
  VERBATIM)
add_custom_target(search-picture DEPENDS "${animation}")

# resources(TARGET SCRIPT FILE...) compiles a script and the files of the pictures' folder that it
# names, which Ninja does not learn from the script.
function(resources target script)
  add_library(${target} OBJECT "${script}")
  target_include_directories(${target} PRIVATE "${pictures}")
  set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS "${ARGN}")
endfunction()

resources(icon-resources "${pictures}/icons.rc")

# What the event log of Windows says of the program. The compiler of messages writes the numbers of
# the languages' files into a script.
find_program(MESSAGE_COMPILER NAMES i686-w64-mingw32-windmc REQUIRED)
set(messages "${CMAKE_SOURCE_DIR}/assets/events.mc")
add_custom_command(
  OUTPUT "${pictures}/events.rc"
  COMMAND "${MESSAGE_COMPILER}" --codepage_in=65001 --unicode_out "--rcdir=${pictures}"
          "--headerdir=${pictures}" "${messages}"
  DEPENDS "${messages}"
  VERBATIM)
resources(event-messages "${pictures}/events.rc")

# program_resources(TARGET PROGRAM DESCRIPTION) makes what a program shows of itself.
function(program_resources target PROGRAM DESCRIPTION)
  set(manifest "${pictures}/${PROGRAM}.manifest")
  configure_file("${CMAKE_SOURCE_DIR}/cmake/${PROGRAM}.manifest.in" "${manifest}" @ONLY)
  configure_file("${CMAKE_SOURCE_DIR}/cmake/program.rc.in" "${pictures}/${PROGRAM}.rc" @ONLY)
  resources(${target} "${pictures}/${PROGRAM}.rc" "${pictures}/zelvreg.ico" "${manifest}")
endfunction()

program_resources(desktop-resources zelvreg "Fix Registry Problems")
program_resources(console-resources zelvreg-console "Fix Registry Problems, in a console")
program_resources(translator-resources zelvtrans "Translate Fix Registry Problems")
