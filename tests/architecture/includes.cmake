# Checks that includes point down: each room may include itself and the rooms listed for it.
# cmake -DROOT=... -P includes.cmake
cmake_minimum_required(VERSION 3.25)

set(shared core numbers qrb include/qrb catalogue files)
set(window/app window/app window/frame window/dialogs window/common ${shared})
set(window/frame window/frame window/panels window/dialogs window/widgets window/common plugin
  exchange simulation ${shared})
set(window/panels window/panels window/dialogs window/widgets window/common plugin exchange
  ${shared})
set(window/dialogs window/dialogs window/widgets window/common plugin exchange ${shared})
set(window/widgets window/widgets window/common ${shared})
set(window/common window/common ${shared})
set(view view drawing ${shared})
set(cli cli view drawing exchange plugin simulation ${shared})
set(exchange exchange ${shared})
set(plugin plugin ${shared})
set(simulation simulation core catalogue)
set(core ${shared})
set(qrb qrb include/qrb catalogue)
set(include/qrb include/qrb)
set(catalogue catalogue)
set(numbers numbers)
set(drawing drawing)
set(files files)
set(engine/base engine/base include/qrb catalogue)
set(engine/schema engine/schema engine/base numbers include/qrb)
set(engine/codec engine/codec engine/schema engine/base)
set(engine/index engine/index engine/schema engine/base)
set(engine/filter engine/filter engine/codec numbers engine/schema engine/base)
set(engine/store engine/store engine/base files)
set(engine/session engine/session engine/store engine/index engine/codec engine/schema engine/base
  catalogue files)
set(engine/query engine/query numbers engine/session engine/filter engine/index
  engine/codec engine/schema engine/base include/qrb)
set(engine/report engine/report drawing numbers engine/query engine/session engine/index
  engine/schema engine/base catalogue)
set(engine/validation engine/validation numbers engine/session engine/index engine/schema engine/base
  catalogue)
set(engine/capi engine/capi engine/validation engine/report engine/query engine/session engine/store
  engine/filter engine/index engine/codec engine/schema engine/base include/qrb catalogue files)
set(rooms window/app window/frame window/panels window/dialogs window/widgets window/common cli
  exchange plugin simulation view core qrb include/qrb catalogue numbers drawing files engine/base engine/schema engine/codec
  engine/index engine/filter engine/store engine/session engine/query engine/validation
  engine/report engine/capi)
# Rooms with folders within them.
set(suites cli exchange window/dialogs)

set(checked 0)
foreach(room IN LISTS rooms)
  if(room IN_LIST suites)
    file(GLOB_RECURSE sources ${ROOT}/${room}/*.cpp ${ROOT}/${room}/*.h)
  else()
    file(GLOB sources ${ROOT}/${room}/*.cpp ${ROOT}/${room}/*.h)
  endif()
  if(NOT sources)
    message(SEND_ERROR "The room ${room} is empty: is the list of rooms up to date?")
  endif()
  foreach(file IN LISTS sources)
    file(STRINGS ${file} includes REGEX "^#include ")
    foreach(include IN LISTS includes)
      math(EXPR checked "${checked} + 1")
      if(include MATCHES "sqlite3.h" AND NOT room STREQUAL "engine/store")
        message(SEND_ERROR "${file}: only engine/store may know the container: ${include}")
      elseif(include MATCHES "\"(.+)/[^/]+\"")
        set(target ${CMAKE_MATCH_1})
        if(include MATCHES "\"qrb/(qrb.h|functions.def)\"")
          set(target include/qrb)
        elseif(target MATCHES "^(cli|exchange|window/dialogs)/")
          set(target ${CMAKE_MATCH_1})
        endif()
        if(NOT target IN_LIST "${room}")
          message(SEND_ERROR "${file}: ${room} may not lean on ${target}: ${include}")
        endif()
      endif()
    endforeach()
  endforeach()
endforeach()
message(STATUS "${checked} includes checked")
