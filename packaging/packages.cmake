# "cpack -G DEB" makes the Debian packages. Dependencies on libraries are read from the programs by
# dpkg-shlibdeps; what programs load by name is told here.
# A package of this version that Debian itself made, revision 1, would take its place.
set(revision 0upstream1)
set(debian_version ${PROJECT_VERSION}-${revision})
set(packages_tool qrbtool)
set(packages_window qrbadmin)
set(packages_library libqrb)
set(packages_development libqrb-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qrbadmin)
set(CPACK_PACKAGE_VENDOR "The qrbadmin authors")
set(CPACK_PACKAGE_CONTACT "The qrbadmin authors <qrbadmin@tarvo-lms.example>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL tool library development)
if(QRB_BUILD_GUI)
  list(APPEND CPACK_COMPONENTS_ALL window)
endif()
# Whoever makes packages has built "installable" before; tests need not be built for it.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON PARENT_SCOPE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_PACKAGE_SOURCE qrbadmin)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME qrbtool)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libqrb (= ${debian_version})")
# Plugins are run by Python, and most are several times as fast with NumPy.
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS "python3 (>= 3.9)")
set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS "python3-numpy")
set(CPACK_COMPONENT_TOOL_DESCRIPTION
"point-cloud database files on the command line
Imports point clouds (LAS, LAZ, PLY, PTX, E57, texts) into database files,
describes, queries, changes, compares, checks and exports them. Every change
is a transaction, to which one can return.

The package has the plugins, too, that come along: Python scripts that
classify ground, compare heights with surveyed points and map densities.")

# The window offers the plugins, which lie in the package of qrbtool.
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME qrbadmin)
set(CPACK_DEBIAN_WINDOW_PACKAGE_SECTION science)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS
  "libqrb (= ${debian_version}), qrbtool (= ${debian_version}), hicolor-icon-theme")
# The words of the toolkit's own buttons and dialogs in other languages.
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_DEBIAN_WINDOW_PACKAGE_SUGGESTS "qt6-wayland")
set(CPACK_COMPONENT_WINDOW_DESCRIPTION
"window on point-cloud database files
Shows the transactions, metadata, point attributes and spatial index of a
point-cloud database, and the points themselves, page by page through filter
expressions. Points of other programs are imported, selections exported,
older states compared and restored.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libqrb)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
"storage library for point-cloud database files
One file per database: transactions as snapshots, a spatial index, compressed
columns, a filter language that skips what can't match. Programs load the
library at run time by the name qrblib.so, or link it.")
foreach(control shlibs triggers)
  configure_file(debian/${control}.in ${CMAKE_CURRENT_BINARY_DIR}/${control} @ONLY)
  list(APPEND CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/${control})
endforeach()

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqrb-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libqrb (= ${debian_version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"storage library for point-cloud database files (development)
Headers of the C interface, the C++20 layer over it, files for CMake and
pkg-config, and examples in C and C++.")

include(debian/documents.cmake)
include(CPack)
