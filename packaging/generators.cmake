# CPack reads this file once for each kind of package.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    set(CPACK_PACKAGING_INSTALL_PREFIX /)
endif()
