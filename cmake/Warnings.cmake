# Only for our own targets: GoogleTest is compiled from its sources in the Windows build.
# -Wsign-conversion is left out, since every call that takes a DWORD would need a cast, and of
# shadowing all but that of a local name, since constructors name a parameter like its member. The
# last four cry wolf in GCC 12 about the standard library's own std::string and std::vector. Clang
# compiles the same sources for sanitizers and measurements; what it warns of, clang-tidy tells.
function(enable_warnings target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    return()
  endif()
  target_compile_options(
    ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow=local -Wconversion -Werror
                      -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow
                      -Wno-stringop-overread)
endfunction()
