# CPack runs this script after copying the files to a staging folder.
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../tools/archive ${CPACK_TEMPORARY_DIRECTORY} ${CPACK_PACKAGE_FILE_NAME}
  COMMAND_ERROR_IS_FATAL ANY)
