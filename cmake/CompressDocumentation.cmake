# Packages hold manual pages and changelogs compressed, without their names and times.
set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*${CPACK_PACKAGING_INSTALL_PREFIX}/share")
file(GLOB documents "${share}/man/*/*" "${share}/doc/*/changelog")
execute_process(COMMAND gzip -9n ${documents} COMMAND_ERROR_IS_FATAL ANY)
