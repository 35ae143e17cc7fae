# Run by CPack on the files of the .deb: Debian requires its own change log, and compresses it and
# the manual pages.
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
