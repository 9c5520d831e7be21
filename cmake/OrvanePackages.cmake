# Debian packages, one per component of the installation: `cpack` in the build directory makes them.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The OrvaneUpid authors <orvaneupid@example.org>")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressDocumentation.cmake)

set(CPACK_COMPONENTS_ALL library development command)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE orvaneupid)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(library liborvaneupid${PROJECT_VERSION_MAJOR})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each component has its own
set(about "
OrvaneUpid describes network applications by the ports and IPv4 addresses
that they use, compares an older with a newer state of them, and writes the
difference as section texts for a device.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "network applications by ports and addresses${about}

This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborvaneupid-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "network applications by ports and addresses - development files${about}

This package holds the headers, the static library, and the files for CMake
and pkg-config.")

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME orvane)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION net)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${library} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION
  "network applications by ports and addresses - command${about}

This package holds the orvane command, which works on files of these texts,
finds collisions with ports in use, and reports what reading a text skips.")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES packaging/changelog packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
    COMPONENT ${component})
endforeach()

include(CPack)
