# Read by cpack before each package: a Debian package is the installed program, an archive the
# portable one.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_COMPONENTS_ALL system)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
  string(TOLOWER ${CPACK_SYSTEM_NAME} system)
  execute_process(COMMAND uname -m OUTPUT_VARIABLE machine OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(CPACK_COMPONENTS_ALL portable)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
  set(CPACK_PACKAGE_FILE_NAME cantavista-${CPACK_PACKAGE_VERSION}-${system}-${machine})
  set(CPACK_ARCHIVE_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
endif()
