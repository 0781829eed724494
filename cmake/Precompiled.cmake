# The standard headers that most sources include, parsed once for each way of compiling. None of
# ours is among them, so that changing one compiles only what includes it.
set(commonHeaders
    <algorithm> <array> <filesystem> <functional> <map> <memory> <optional> <span> <string>
    <string_view> <vector>)
if(WIN32)
  list(APPEND commonHeaders <windows.h>)
endif()

# The compiler cache needs it to tell what a source takes from the precompiled header.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(precompiledOptions -Xclang -fno-pch-timestamp)
else()
  set(precompiledOptions -fpch-preprocess)
endif()

# precompile(TARGET HEADER...): the common headers, and further ones, for this target alone.
function(precompile target)
  target_precompile_headers(${target} PRIVATE ${commonHeaders} ${ARGN})
  target_compile_options(${target} PRIVATE ${precompiledOptions})
endfunction()

# A target with nothing in it but the common headers, for those that are compiled alike.
file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/precompiled.cpp" CONTENT "")
add_library(precompiled OBJECT "${CMAKE_BINARY_DIR}/precompiled.cpp")
enable_warnings(precompiled)
precompile(precompiled)

# share_precompiled(TARGET): its options and definitions must be those of `precompiled`.
function(share_precompiled target)
  target_precompile_headers(${target} REUSE_FROM precompiled)
  target_compile_options(${target} PRIVATE ${precompiledOptions})
endfunction()
