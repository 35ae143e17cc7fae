# Installs the built tree BUILD into the empty folder PREFIX, and tells of it only when it fails.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --strip --prefix ${PREFIX}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(TOUCH ${PREFIX}.stamp)
