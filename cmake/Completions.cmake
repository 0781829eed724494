# The scripts that complete command lines, as texts in the program: each is a file, so that an editor
# knows its language.
function(add_completion_scripts target)
  foreach(shell bash zsh fish)
    set(script "${CMAKE_CURRENT_SOURCE_DIR}/console/completions/${shell}.in")
    string(TOUPPER ${shell} name)
    file(READ "${script}" ${name})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${script}")
  endforeach()
  set(texts "${CMAKE_CURRENT_BINARY_DIR}/completion-scripts.cpp")
  configure_file("${CMAKE_SOURCE_DIR}/cmake/completion-scripts.cpp.in" "${texts}" @ONLY)
  target_sources(${target} PRIVATE "${texts}")
endfunction()
