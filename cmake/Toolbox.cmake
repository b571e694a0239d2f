# Compiler cache, warnings, sanitizers and external libraries for the whole project.

find_program(TARNWICK_CCACHE ccache)
if(TARNWICK_CCACHE)
    # ccache can handle precompiled headers only if it may ignore their time stamps.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${TARNWICK_CCACHE})
endif()

find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Gui Widgets)
find_package(Threads REQUIRED)
find_package(cubeb REQUIRED)
find_package(OpenSSL REQUIRED COMPONENTS Crypto)
find_package(PkgConfig REQUIRED)
pkg_check_modules(sqlcipher REQUIRED IMPORTED_TARGET sqlcipher)
pkg_check_modules(libzip REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(pugixml REQUIRED IMPORTED_TARGET pugixml)
pkg_check_modules(sndfile REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(mpg123 REQUIRED IMPORTED_TARGET libmpg123)
pkg_check_modules(lame REQUIRED IMPORTED_TARGET lame)
pkg_check_modules(soxr REQUIRED IMPORTED_TARGET soxr)

set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g -fno-omit-frame-pointer")
set(CMAKE_EXE_LINKER_FLAGS_SANITIZE "")

add_library(tarnwick_flags INTERFACE)
target_compile_options(tarnwick_flags INTERFACE -Wall -Wextra -Werror)
target_compile_definitions(tarnwick_flags INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS)
if(TARNWICK_SANITIZE)
    target_compile_options(tarnwick_flags INTERFACE
        -fsanitize=${TARNWICK_SANITIZE} -fno-sanitize-recover=all)
    # In sanitized library code GCC warns of uninitialised values where there are none; presets
    # without sanitizers keep the warning.
    target_compile_options(tarnwick_flags INTERFACE
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(tarnwick_flags INTERFACE -fsanitize=${TARNWICK_SANITIZE})
endif()
if(TARNWICK_FUZZ)
    # Instrument all code for coverage; only the fuzzers themselves link libFuzzer's main.
    target_compile_options(tarnwick_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Two precompiled headers: one for rooms that use Qt Core only, one for rooms with Qt Widgets.
foreach(kind core widgets)
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/pch/${kind}.cpp
         CONTENT "// carries the precompiled header\n")
    add_library(tarnwick_pch_${kind} STATIC ${CMAKE_BINARY_DIR}/pch/${kind}.cpp)
    set_target_properties(tarnwick_pch_${kind} PROPERTIES AUTOMOC OFF)
    target_link_libraries(tarnwick_pch_${kind} PRIVATE tarnwick_flags Qt6::Core)
endforeach()
target_link_libraries(tarnwick_pch_widgets PRIVATE Qt6::Widgets)
target_precompile_headers(tarnwick_pch_core PRIVATE
    <QtCore> <algorithm> <array> <cmath> <functional> <memory> <optional> <span> <string> <vector>)
target_precompile_headers(tarnwick_pch_widgets PRIVATE
    <QtWidgets> <algorithm> <array> <cmath> <functional> <memory> <optional> <span> <string> <vector>)
