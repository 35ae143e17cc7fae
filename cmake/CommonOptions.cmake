# The compiler options of every target of ours. Presets switch sanitizers and coverage on.
option(KELVARON_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(KELVARON_COVERAGE "Build with coverage counters" OFF)
option(KELVARON_PRECOMPILE "Precompile the headers of Qt and GoogleTest; hides a missing #include" OFF)
option(KELVARON_FUZZ "Build the fuzz targets with libFuzzer and the sanitizers; needs Clang" OFF)

add_library(kelvaron_options INTERFACE)

if(MSVC)
    target_compile_options(kelvaron_options INTERFACE /W4 /WX /utf-8)
else()
    target_compile_options(kelvaron_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()

target_compile_definitions(kelvaron_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS)

if(KELVARON_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(KELVARON_FUZZ)
    # The fuzzer's own main function is linked only to the fuzz targets.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(KELVARON_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()

# kelvaron_precompile(TARGET HEADER...): headers that most sources of the target include.
function(kelvaron_precompile target)
    if(KELVARON_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
