# What makes an error in the code harder to use for somebody who hands the program a hostile file.
# docs/dependencies.md says what each is good for and what it costs; tests/hardening/check looks for
# them in the built files.
option(ZELVREG_HARDEN "Check stack, sizes and indexes while running; OFF to measure what it costs" ON)

# Sanitizers check the same and more, and counters of lines have to be those of the code as written.
if(ZELVREG_HARDEN AND NOT ZELVREG_SANITIZE AND NOT ZELVREG_COVERAGE)
  # A function that keeps an array or hands out an address of its own looks after its stack. Calls
  # that copy into what has a known size end the program instead of writing past it, and so do
  # an index past the end of a container and what an empty optional holds.
  add_compile_options(-fstack-protector-strong)
  add_compile_definitions(_GLIBCXX_ASSERTIONS _FORTIFY_SOURCE=2)
  if(WIN32)
    link_libraries(ssp)
  else()
    # No large array jumps over the page that ends a stack.
    add_compile_options(-fstack-clash-protection)
    # Jumps through an address end only where a function or a case begins, and calls return to where
    # they came from, on processors that look after it.
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|amd64)$")
      add_compile_options(-fcf-protection=full)
      # The start-up code of Debian does not say that it keeps to it, which it does.
      add_link_options(-Wl,-z,shstk)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
      add_compile_options(-mbranch-protection=standard)
    endif()
  endif()
endif()

if(WIN32)
  # At a random address, no code in data, no handler of exceptions in the place of ours, and without
  # what a terminal server does for programs that think the Windows folder is theirs to write into.
  add_link_options(-Wl,--dynamicbase,--nxcompat,--no-seh,--tsaware)
else()
  # At a random address, no code in data, and addresses of functions that are fixed before anything
  # runs.
  add_link_options(-pie -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
