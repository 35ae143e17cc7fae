# Makes the demo installation; run by the build with these variables:
#   PROFILES_TOOL  the kelvaron-profiles program
#   FIRMWARE_TOOL  the program that makes the demo's firmware
#   SIMULATOR      the program that replaces the charger's uploader
#   SOURCE         this folder
#   FOLDER         the editor's folder for installed files
#   VERSION        version of the bundle, also its file name
#   UPLOADER       name of the uploader's file

file(MAKE_DIRECTORY ${FOLDER})

# The editor uses the newest bundle, so the bundle of an older demo must be removed.
file(GLOB old_bundles ${FOLDER}/*.kelvaron)
if(old_bundles)
    file(REMOVE ${old_bundles})
endif()

set(firmware ${CMAKE_CURRENT_BINARY_DIR}/firmware.hex)
execute_process(COMMAND ${FIRMWARE_TOOL} ${SOURCE}/kelvaron_chemistries.cb ${firmware}
    OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The demo firmware could not be made (${result}).")
endif()

set(bundle ${FOLDER}/v${VERSION}.kelvaron)
execute_process(
    COMMAND ${PROFILES_TOOL} bundle pack --output ${bundle}
        --device ${SOURCE}/device.txt --schema ${SOURCE}/kelvaron_chemistries.cb
        --key VERSION=${VERSION} --key MIN_SOFTWARE_VERSION_REQUIRED=0.9
        --file hexToFlash.hex=${firmware} --file ${SOURCE}/device_nooverwrite.txt
    RESULT_VARIABLE result)
if(result EQUAL 0)
    execute_process(COMMAND ${PROFILES_TOOL} bundle check ${bundle}
        OUTPUT_VARIABLE output RESULT_VARIABLE result)
endif()
if(NOT result EQUAL 0)
    file(REMOVE ${bundle})
    message(FATAL_ERROR "The demo bundle could not be made (${result}). ${output}")
endif()

# The simulated charger answers on any port; the machine may have no port of its own.
file(COPY_FILE ${SOURCE}/serial_ports.txt ${FOLDER}/serial_ports.txt)
file(COPY_FILE ${SIMULATOR} ${FOLDER}/${UPLOADER})
file(TOUCH ${FOLDER}/${UPLOADER}) # or the build would find it out of date forever
