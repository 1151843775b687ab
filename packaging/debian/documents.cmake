# What Debian wants in each package: changelogs and the licences. Only packages have them, not what
# "cmake --install" puts elsewhere.
set(folder ${CMAKE_CURRENT_BINARY_DIR}/debian)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md)

# The date of the commit, so that two builds of it are the same.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH} AND GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    OUTPUT_VARIABLE committed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  set(ENV{SOURCE_DATE_EPOCH} "${committed}")
endif()
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(debian/changelog.in ${folder}/changelog.Debian @ONLY)
configure_file(${CMAKE_SOURCE_DIR}/CHANGELOG.md ${folder}/changelog COPYONLY)
if(GZIP)
  execute_process(COMMAND ${GZIP} -9nf ${folder}/changelog.Debian ${folder}/changelog
    COMMAND_ERROR_IS_FATAL ANY)
endif()

# debian_documents(COMPONENT NAME...): licences of what is compiled in are the files
# debian/copyright.NAME.
function(debian_documents component)
  set(package ${packages_${component}})
  set(text "")
  foreach(part common ${package} ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
      ${CMAKE_CURRENT_SOURCE_DIR}/debian/copyright.${part})
    file(READ debian/copyright.${part} stanza)
    if(NOT part STREQUAL "common" AND NOT part STREQUAL package)
      string(APPEND text "\n")
    endif()
    string(APPEND text "${stanza}")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${package}/copyright CONTENT "${text}" @ONLY)
  install(FILES ${folder}/${package}/copyright ${folder}/changelog.Debian.gz ${folder}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/${package}.lintian-overrides)
    install(FILES debian/${package}.lintian-overrides DESTINATION share/lintian/overrides
      RENAME ${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endfunction()

debian_documents(tool cli11 rapidjson)
debian_documents(library rapidjson xxhash)
debian_documents(development rapidjson)
if(QRB_BUILD_GUI)
  debian_documents(window rapidjson)
endif()
