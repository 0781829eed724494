# The sources below a folder that belong to the system we build for: a file whose name ends in
# Windows.cpp is compiled only there, one that ends in Native.cpp only elsewhere.
function(find_sources result folder)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS "${folder}/*.cpp")
  if(WIN32)
    list(FILTER found EXCLUDE REGEX "Native\\.cpp$")
  else()
    list(FILTER found EXCLUDE REGEX "Windows\\.cpp$")
  endif()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()
