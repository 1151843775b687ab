# What makes a fault in the programs harder to use against whoever opens a hostile file: bounds
# that are checked, a stack that tells when it was overwritten, addresses that can't be foreseen,
# tables of calls that can't be written to. tests/hardening looks whether the programs have it.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  include(CheckPIESupported)
  check_pie_supported()
  # A compiler may define another level itself. Without optimisation there is none.
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>"
    -fstack-protector-strong -fstack-clash-protection)
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    # The C library's start-up code is fit for the shadow stack, but not marked so by each
    # distribution, and one file without the mark takes it from the whole program.
    add_compile_options(-fcf-protection=full)
    add_link_options(LINKER:-z,shstk)
  endif()
endif()
