# How desktops know the window and its files.
if(NOT QRB_BUILD_GUI)
  return()
endif()

install(FILES desktop/qrbadmin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
  COMPONENT window)
install(FILES desktop/qrbadmin.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
  COMPONENT window)
install(FILES desktop/example.tarvo_lms.qrbadmin.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT window)

set(pictures "")
# install_icon(SVG CONTEXT NAME): the drawing, and pictures of it for desktops that read no SVG.
function(install_icon svg context name)
  set(theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${svg} DESTINATION ${theme}/scalable/${context} RENAME ${name}.svg COMPONENT window)
  foreach(size 16 22 24 32 48 64 128 256)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}x${size}/${context})
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${folder}/${name}.png DEPENDS ${svg}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${folder}/${name}.png ${svg} VERBATIM)
    list(APPEND pictures ${folder}/${name}.png)
    install(FILES ${folder}/${name}.png DESTINATION ${theme}/${size}x${size}/${context}
      COMPONENT window)
  endforeach()
  set(pictures ${pictures} PARENT_SCOPE)
endfunction()

install_icon(${CMAKE_SOURCE_DIR}/resources/icons/logo.svg apps qrbadmin)
install_icon(${CMAKE_CURRENT_SOURCE_DIR}/desktop/application-x-qrbx.svg mimetypes
  application-x-qrbx)
add_custom_target(qrb_desktop_icons ALL DEPENDS ${pictures})
