# CPack reads this once for each package that it makes.
if(CPACK_GENERATOR STREQUAL "TGZ")
  set(CPACK_PACKAGE_FILE_NAME orvane-utilities-${CPACK_PACKAGE_VERSION}-linux-${CMAKE_HOST_SYSTEM_PROCESSOR})
  string(REPLACE ";ALL;" ";portable;" CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_INSTALL_CMAKE_PROJECTS}")
endif()
