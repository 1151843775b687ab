# Writes generated/version.h: the project's version and the commit that it was configured from.
find_package(Git QUIET)
set(QRB_COMMIT "00000000")
if(GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --short=8 HEAD
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE commit
    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
  if(failed EQUAL 0)
    set(QRB_COMMIT "${commit}")
  endif()
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.h.in ${CMAKE_BINARY_DIR}/generated/version.h)
