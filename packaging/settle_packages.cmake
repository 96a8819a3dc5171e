# CPack runs this when a package is made.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/settle_package.sh ${package} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
