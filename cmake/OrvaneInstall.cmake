# What `cmake --install` lays down. Nothing in it names the prefix, so that the tree can be moved.
# Component "library" is what programs need to run, "development" what they are built with, and
# "command" the orvane command with its manual and completions.

include(CMakePackageConfigHelpers)

set(targets OrvaneUpid)
if(TARGET OrvaneUpid_static)
  list(APPEND targets OrvaneUpid_static)
endif()
install(TARGETS ${targets} EXPORT OrvaneUpid
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(DIRECTORY include/orvane ${PROJECT_BINARY_DIR}/include/orvane
  TYPE INCLUDE COMPONENT development FILES_MATCHING PATTERN "*.h")

# The library depends on nothing, so that its targets are the whole CMake package.
set(cmake_directory ${CMAKE_INSTALL_LIBDIR}/cmake/OrvaneUpid)
install(EXPORT OrvaneUpid FILE OrvaneUpidConfig.cmake NAMESPACE OrvaneUpid::
  DESTINATION ${cmake_directory} COMPONENT development)
write_basic_package_version_file(OrvaneUpidConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvaneUpidConfigVersion.cmake
  DESTINATION ${cmake_directory} COMPONENT development)

file(RELATIVE_PATH pc_includedir
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/OrvaneUpid.pc.in OrvaneUpid.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvaneUpid.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET orvane)
  file(RELATIVE_PATH libdir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(orvane PROPERTIES INSTALL_RPATH "$ORIGIN/${libdir}")
  install(TARGETS orvane COMPONENT command)
  install(FILES man/orvane.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
  install(FILES man/orvane-formats.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5 COMPONENT command)
  install(FILES completions/orvane.bash RENAME orvane
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT command)
  set(ORVANE_ZSH_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING
      "Where the completion of zsh is installed")
  install(FILES completions/_orvane DESTINATION ${ORVANE_ZSH_DIR} COMPONENT command)
endif()

if(ORVANE_PACKAGE)
  include(cmake/OrvanePackages.cmake)
endif()
