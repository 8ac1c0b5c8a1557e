# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The language, the warnings and the sanitizers that every target of this project is built with.

option(LUMORA_BENCHMARKS "Build the benchmarks" OFF)
option(LUMORA_FUZZ "Build the fuzzers as such, which takes clang, and not as tests" OFF)
set(LUMORA_SANITIZE "" CACHE STRING "Sanitizers for our own code, as -fsanitize takes them, such as address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Sanitizers and their line tables make large programs of small tests; mold links one in a tenth of the time.
find_program(MOLD mold)

# Warnings as errors, for code that we wrote.
add_library(lumora_warnings INTERFACE)
target_compile_options(lumora_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wconversion -Wno-sign-conversion -Wformat=2 -Wimplicit-fallthrough
    -Wno-missing-field-initializers) # records have defaults: naming only some fields is how they are meant

# What a target of the program or of its tests links: warnings and sanitizers.
add_library(lumora_options INTERFACE)
target_link_libraries(lumora_options INTERFACE lumora_warnings)
target_compile_definitions(lumora_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_URL_CAST_FROM_STRING)
if(LUMORA_SANITIZE)
    target_compile_options(lumora_options INTERFACE
        -fsanitize=${LUMORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(lumora_options INTERFACE -fsanitize=${LUMORA_SANITIZE} $<$<BOOL:${MOLD}>:-fuse-ld=mold>)
endif()

# One static library for one folder: lumora_add_library(NAME SOURCES … LINKS …)
function(lumora_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII) # tests read better with plain literals
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE lumora_options)
endfunction()
