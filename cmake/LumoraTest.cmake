# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# One Qt Test executable, run offscreen, or by a command of its own: lumora_add_test(NAME SOURCES … LINKS … [RUN …])
function(lumora_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;RUN")
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE Qt6::Test ${arg_LINKS} lumora_options)
    add_test(NAME ${name} COMMAND ${arg_RUN} $<TARGET_FILE:${name}>)
endfunction()
