# Files as texts in the program, so that an editor knows the language of each.

# embed_texts(TARGET FOLDER TEMPLATE FILE...): cmake/TEMPLATE.cpp.in with the content of each file of
# src/FOLDER in place of its ending or name in upper case, as @CSS@ for page.css and @BASH@ for bash.in.
function(embed_texts target folder template)
  foreach(file ${ARGN})
    set(path "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/${file}")
    string(REGEX REPLACE "\\.in$" "" name "${file}")
    string(REGEX REPLACE "^.*\\." "" name "${name}")
    string(TOUPPER "${name}" name)
    file(READ "${path}" ${name})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
  endforeach()
  set(texts "${CMAKE_CURRENT_BINARY_DIR}/${template}.cpp")
  configure_file("${CMAKE_SOURCE_DIR}/cmake/${template}.cpp.in" "${texts}" @ONLY)
  target_sources(${target} PRIVATE "${texts}")
endfunction()
