# The page that shows merged results, as texts in the program: its parts are files of their own kinds,
# so that an editor knows their languages.
function(add_page target)
  foreach(part html css js)
    set(file "${CMAKE_CURRENT_SOURCE_DIR}/fleet/page/page.${part}")
    string(TOUPPER ${part} name)
    file(READ "${file}" ${name})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  endforeach()
  set(texts "${CMAKE_CURRENT_BINARY_DIR}/page-parts.cpp")
  configure_file("${CMAKE_SOURCE_DIR}/cmake/page-parts.cpp.in" "${texts}" @ONLY)
  target_sources(${target} PRIVATE "${texts}")
endfunction()
