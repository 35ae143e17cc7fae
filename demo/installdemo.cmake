# Makes the demo installation; run by the build with these variables:
#   BUNDLE_TOOL  the kelvaron-bundle program
#   SOURCE       this folder
#   FOLDER       where the editor looks for its installed files
#   VERSION      version of the bundle, also its file name
#   UPLOADER     name of the uploader's file

file(MAKE_DIRECTORY ${FOLDER})

# The editor takes the newest bundle that it finds, so an older demo must not stay beside this one.
file(GLOB old_bundles ${FOLDER}/*.kelvaron)
if(old_bundles)
    file(REMOVE ${old_bundles})
endif()

set(bundle ${FOLDER}/v${VERSION}.kelvaron)
execute_process(
    COMMAND ${BUNDLE_TOOL} pack --output ${bundle}
        --device ${SOURCE}/device.txt --schema ${SOURCE}/kelvaron_chemistries.cb
        --key VERSION=${VERSION} --key MIN_SOFTWARE_VERSION_REQUIRED=0.9
    RESULT_VARIABLE result)
if(result EQUAL 0)
    execute_process(COMMAND ${BUNDLE_TOOL} check ${bundle}
        OUTPUT_VARIABLE output RESULT_VARIABLE result)
endif()
if(NOT result EQUAL 0)
    file(REMOVE ${bundle})
    message(FATAL_ERROR "The demo bundle could not be made (${result}). ${output}")
endif()

file(COPY_FILE ${SOURCE}/supl-placeholder.sh ${FOLDER}/${UPLOADER})
file(TOUCH ${FOLDER}/${UPLOADER}) # or the build would find it out of date forever
