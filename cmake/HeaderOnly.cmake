# Two libraries that are headers alone serve both builds from the host's packages. They are staged
# in a folder of their own, because /usr/include must not come near the Windows headers.
find_path(HOST_HEADERS NAMES CLI/CLI.hpp PATHS /usr/include NO_DEFAULT_PATH
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(stage "${CMAKE_BINARY_DIR}/header-only")
file(MAKE_DIRECTORY "${stage}")
foreach(library CLI nlohmann)
  if(NOT EXISTS "${HOST_HEADERS}/${library}")
    message(FATAL_ERROR "${HOST_HEADERS}/${library} is missing; ./run installs it")
  endif()
  file(CREATE_LINK "${HOST_HEADERS}/${library}" "${stage}/${library}" SYMBOLIC)
endforeach()

add_library(header-only INTERFACE)
target_include_directories(header-only SYSTEM INTERFACE "${stage}")
