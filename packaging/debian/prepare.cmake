# Run by CPack on the tree that becomes the .deb: Debian wants its own change log, and this and the
# manual pages compressed.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
set(documents ${share}/doc/${CPACK_PACKAGE_NAME})
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(COPY_FILE ${CPACK_KELVARON_DEBIAN_CHANGELOG} ${documents}/changelog.Debian)
file(GLOB pages ${share}/man/man1/*.1)
execute_process(
    COMMAND gzip --best --no-name --force
        ${pages} ${documents}/changelog ${documents}/changelog.Debian
    COMMAND_ERROR_IS_FATAL ANY)
