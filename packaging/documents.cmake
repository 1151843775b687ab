# The guides, manual pages and completions of shells.
if(QRB_BUILD_GUI)
  set(guide_component window)
else()
  set(guide_component tool)
endif()
set(guide ${CMAKE_INSTALL_DATADIR}/doc/qrbadmin)
install(FILES ${CMAKE_SOURCE_DIR}/docs/user-guide.md ${CMAKE_SOURCE_DIR}/docs/tutorial.md
  ${CMAKE_SOURCE_DIR}/docs/plugins.md
  DESTINATION ${guide} COMPONENT ${guide_component})
# The pictures that these show.
set(shown "")
foreach(text user-guide tutorial plugins)
  file(STRINGS ${CMAKE_SOURCE_DIR}/docs/${text}.md lines REGEX "\\]\\(images/")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE ".*\\(images/([^)]+)\\).*" "\\1" picture "${line}")
    list(APPEND shown ${CMAKE_SOURCE_DIR}/docs/images/${picture})
  endforeach()
endforeach()
list(REMOVE_DUPLICATES shown)
install(FILES ${shown} DESTINATION ${guide}/images COMPONENT ${guide_component})
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION ${guide} COMPONENT licence)

# What the target qrb_documents writes, if this build has it: what is named after the window goes
# with the window, all else with qrbtool.
set(written ${CMAKE_BINARY_DIR}/generated/share)
foreach(folder bash-completion/completions zsh/vendor-completions fish/vendor_completions.d)
  install(DIRECTORY ${written}/${folder}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder}
    COMPONENT tool OPTIONAL PATTERN "*qrbadmin*" EXCLUDE)
  if(QRB_BUILD_GUI)
    install(DIRECTORY ${written}/${folder}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder}
      COMPONENT window OPTIONAL FILES_MATCHING PATTERN "*qrbadmin*")
  endif()
endforeach()

find_program(GZIP gzip)
# install_pages(COMPONENT GLOB [NOT_GLOB]): compressed as Debian wants them, the same in each build.
function(install_pages component glob except)
  install(CODE "
    file(GLOB pages \"${written}/man/man1/${glob}\")
    if(NOT \"${except}\" STREQUAL \"\")
      list(FILTER pages EXCLUDE REGEX \"${except}\")
    endif()
    foreach(page IN LISTS pages)
      file(INSTALL \"\${page}\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1\")
      if(NOT \"${GZIP}\" MATCHES \"NOTFOUND\")
        get_filename_component(name \"\${page}\" NAME)
        execute_process(COMMAND \"${GZIP}\" -9nf
          \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1/\${name}\"
          COMMAND_ERROR_IS_FATAL ANY)
      endif()
    endforeach()" COMPONENT ${component})
endfunction()
install_pages(tool "*.1" "/qrbadmin[^/]*$")
if(QRB_BUILD_GUI)
  install_pages(window "qrbadmin*.1" "")
endif()
