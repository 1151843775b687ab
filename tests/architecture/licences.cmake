# Checks that the licences that the about box shows name every library that the build asks for.
# cmake -DROOT=... -P licences.cmake
cmake_minimum_required(VERSION 3.25)

# What is no part of the programs.
set(passed_over git threads pkgconfig gtest qrb python3)
# As the text names them, where that isn't the build's name.
set(name_qt6 "Qt 6")
set(name_png "libpng")
set(name_crypto "OpenSSL")
set(name_zstd "Zstandard")
set(name_sqlite "SQLite")

file(READ ${ROOT}/resources/licences.txt.in text)
string(TOLOWER "${text}" text)
file(GLOB_RECURSE lists ${ROOT}/cli/CMakeLists.txt ${ROOT}/cmake/*.cmake ${ROOT}/core/CMakeLists.txt
  ${ROOT}/engine/CMakeLists.txt ${ROOT}/exchange/CMakeLists.txt ${ROOT}/files/CMakeLists.txt
  ${ROOT}/plugin/CMakeLists.txt ${ROOT}/window/CMakeLists.txt)
list(APPEND lists ${ROOT}/CMakeLists.txt)
set(asked "")
foreach(list IN LISTS lists)
  file(STRINGS ${list} lines REGEX "(find_package|pkg_check_modules) *\\(")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE ".*(find_package|pkg_check_modules) *\\( *([A-Za-z0-9_]+).*" "\\2" name "${line}")
    list(APPEND asked ${name})
  endforeach()
endforeach()
# Libraries of headers alone are in no build file.
file(GLOB_RECURSE sources ${ROOT}/cli/*.cpp ${ROOT}/core/*.cpp ${ROOT}/core/*.h ${ROOT}/engine/*.cpp
  ${ROOT}/exchange/*.cpp)
foreach(header rapidjson/ xxhash CLI/)
  foreach(source IN LISTS sources)
    file(STRINGS ${source} found REGEX "^#include <${header}" LIMIT_COUNT 1)
    if(found)
      string(REGEX REPLACE "/$" "" name "${header}")
      list(APPEND asked ${name})
      break()
    endif()
  endforeach()
endforeach()

set(checked 0)
foreach(name IN LISTS asked)
  string(TOLOWER ${name} name)
  if(name IN_LIST passed_over)
    continue()
  endif()
  if(DEFINED name_${name})
    string(TOLOWER "${name_${name}}" name)
  endif()
  if(NOT text MATCHES "\n  ${name}")
    message(SEND_ERROR "resources/licences.txt.in does not name ${name}, which the build asks for.")
  endif()
  math(EXPR checked "${checked} + 1")
endforeach()
if(checked LESS 9)
  message(SEND_ERROR "Only ${checked} libraries were found in the build files.")
endif()
