# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The engine: libllama with ggml.
#
# LUMORA_LLAMA_PREFIX names a folder into which libllama's packages and those of the C library that they want were
# unpacked (PREFIX/usr/include, PREFIX/usr/lib/ARCHITECTURE/…). A program built on it runs under that folder's own loader.
# Without it, the system's libllama is taken. Sets LUMORA_LLAMA_FOUND, and where it is on offers
#   Lumora::llama   what such a program links
#   Lumora::mtmd    where LUMORA_MTMD_FOUND is on as well: libmtmd, which comes with libllama and reads images
#   lumora_add_llama_program(NAME SOURCES … LINKS … ARGUMENTS …)
#       builds bin/NAME; ARGUMENTS are what the launcher passes before its own, with @RUNTIME@ for the folder of the
#       libraries that it runs on and @BACKENDS@ for that of ggml's backends. They are passed only where there is a
#       launcher.
#   lumora_install_llama_program(NAME FOLDER)

set(LUMORA_LLAMA_PREFIX "" CACHE PATH "Folder with libllama's unpacked packages; empty for the system's libllama")
set(LUMORA_LLAMA_FOUND OFF)
set(LUMORA_MTMD_FOUND OFF)

if(LUMORA_LLAMA_PREFIX)
    file(GLOB lumora_llama_libraries ${LUMORA_LLAMA_PREFIX}/usr/lib/*/libllama.so)
    if(NOT lumora_llama_libraries)
        message(FATAL_ERROR "LUMORA_LLAMA_PREFIX: there is no usr/lib/*/libllama.so in ${LUMORA_LLAMA_PREFIX}")
    endif()
    list(GET lumora_llama_libraries 0 LUMORA_LLAMA_LIBRARY)
    cmake_path(GET LUMORA_LLAMA_LIBRARY PARENT_PATH LUMORA_LLAMA_FOLDER)
    file(GLOB LUMORA_LLAMA_LOADER ${LUMORA_LLAMA_FOLDER}/ld-linux*.so.*)
    file(GLOB LUMORA_LLAMA_BACKENDS LIST_DIRECTORIES ON ${LUMORA_LLAMA_FOLDER}/ggml/backends*)
    if(NOT LUMORA_LLAMA_LOADER OR NOT LUMORA_LLAMA_BACKENDS)
        message(FATAL_ERROR "LUMORA_LLAMA_PREFIX: the loader or ggml's backends are missing in ${LUMORA_LLAMA_FOLDER}")
    endif()
    if(LUMORA_LLAMA_FOLDER MATCHES "[:;]")
        message(FATAL_ERROR "LUMORA_LLAMA_PREFIX: the path ${LUMORA_LLAMA_FOLDER} has a colon or a semicolon in it, which "
            "the loader takes for the end of a path. Unpack the packages into another folder.")
    endif()
    set(LUMORA_LLAMA_FOUND ON)

    add_library(Lumora::llama INTERFACE IMPORTED)
    target_include_directories(Lumora::llama SYSTEM INTERFACE ${LUMORA_LLAMA_PREFIX}/usr/include)
    # libllama's own search path does not lead into the folder, so each library is linked by name. They ask for a newer C
    # library than the one that is linked against here; the loader in the folder brings it.
    target_link_libraries(Lumora::llama INTERFACE ${LUMORA_LLAMA_LIBRARY} ${LUMORA_LLAMA_FOLDER}/libggml.so
        ${LUMORA_LLAMA_FOLDER}/libggml-base.so)
    target_link_options(Lumora::llama INTERFACE -Wl,--allow-shlib-undefined)
    message(STATUS "libllama: ${LUMORA_LLAMA_FOLDER}")
else()
    find_package(llama CONFIG QUIET)
    if(llama_FOUND)
        set(LUMORA_LLAMA_FOUND ON)
        add_library(Lumora::llama INTERFACE IMPORTED)
        target_link_libraries(Lumora::llama INTERFACE llama)
        message(STATUS "libllama: the system's")
    else()
        message(STATUS "libllama: not found. The model service and its tests are left out; see LUMORA_LLAMA_PREFIX.")
    endif()
endif()

# libmtmd's functions still change from version to version. One that has others than are called counts as none.
if(LUMORA_LLAMA_FOUND)
    if(LUMORA_LLAMA_PREFIX)
        find_library(LUMORA_MTMD_LIBRARY mtmd PATHS ${LUMORA_LLAMA_FOLDER} NO_DEFAULT_PATH NO_CACHE)
        find_path(LUMORA_MTMD_HEADERS mtmd-helper.h PATHS ${LUMORA_LLAMA_PREFIX}/usr/include NO_DEFAULT_PATH NO_CACHE)
    else()
        find_library(LUMORA_MTMD_LIBRARY mtmd NO_CACHE)
        find_path(LUMORA_MTMD_HEADERS mtmd-helper.h NO_CACHE)
    endif()
    string(MD5 found "${LUMORA_MTMD_LIBRARY} ${LUMORA_MTMD_HEADERS}") # what was checked of one holds for no other
    if(LUMORA_MTMD_LIBRARY AND LUMORA_MTMD_HEADERS)
        include(CheckCXXSourceCompiles)
        set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY) # nothing to link
        set(CMAKE_REQUIRED_LIBRARIES Lumora::llama)
        set(CMAKE_REQUIRED_INCLUDES ${LUMORA_MTMD_HEADERS})
        check_cxx_source_compiles("
            #include <mtmd-helper.h>
            int tokenize(mtmd_context *c, mtmd_input_chunks *o, const mtmd_input_part *const *p)
            {
                return mtmd_tokenize_from_parts(c, o, p, 1, false);
            }
            int decode(mtmd_context *c, llama_context *l, const mtmd_input_chunk *k, float *e, llama_pos *n)
            {
                return mtmd_decode_use_non_causal(c, k)
                    && mtmd_helper_decode_image_chunk(c, l, k, e, 0, 0, 1, n, nullptr, nullptr);
            }
            void set(mtmd_context_params &p)
            {
                p.cb_eval = nullptr;
                p.progress_callback = nullptr;
            }" LUMORA_MTMD_USABLE_${found})
        unset(CMAKE_TRY_COMPILE_TARGET_TYPE)
        unset(CMAKE_REQUIRED_LIBRARIES)
        unset(CMAKE_REQUIRED_INCLUDES)
    endif()
    if(LUMORA_MTMD_USABLE_${found})
        set(LUMORA_MTMD_FOUND ON)
        add_library(Lumora::mtmd INTERFACE IMPORTED)
        target_include_directories(Lumora::mtmd SYSTEM INTERFACE ${LUMORA_MTMD_HEADERS})
        target_link_libraries(Lumora::mtmd INTERFACE ${LUMORA_MTMD_LIBRARY} Lumora::llama)
    else()
        message(STATUS "libmtmd: not found, or another version. The model service reads no images.")
    endif()
endif()

# A text as it has to stand between double quotes in a shell's script.
function(lumora_quote_for_shell text output)
    string(REGEX REPLACE "([\\\\\"$`])" "\\\\\\1" quoted "${text}")
    set(${output} "${quoted}" PARENT_SCOPE)
endfunction()

# The launcher of a program that runs under the folder's loader. RUNTIME: the folder, as the launcher finds
# it, which the shell expands between double quotes.
function(lumora_write_launcher path name runtime arguments)
    set(LAUNCHER_NAME ${name})
    set(LAUNCHER_RUNTIME ${runtime})
    cmake_path(GET LUMORA_LLAMA_LOADER FILENAME LAUNCHER_LOADER)
    cmake_path(RELATIVE_PATH LUMORA_LLAMA_BACKENDS BASE_DIRECTORY ${LUMORA_LLAMA_FOLDER} OUTPUT_VARIABLE backends)
    lumora_quote_for_shell("${backends}" backends)
    list(JOIN arguments " " LAUNCHER_ARGUMENTS)
    string(REPLACE "@BACKENDS@" "\"$runtime/${backends}\"" LAUNCHER_ARGUMENTS "${LAUNCHER_ARGUMENTS}")
    string(REPLACE "@RUNTIME@" "\"$runtime\"" LAUNCHER_ARGUMENTS "${LAUNCHER_ARGUMENTS}")
    configure_file(${PROJECT_SOURCE_DIR}/cmake/launcher.sh.in ${path} @ONLY
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()

# Installs a program that lumora_add_llama_program made, with all that it runs on beside it.
function(lumora_install_llama_program name folder)
    if(NOT LUMORA_LLAMA_PREFIX)
        install(TARGETS ${name} RUNTIME DESTINATION ${folder})
        return()
    endif()
    get_target_property(arguments ${name} LUMORA_ARGUMENTS)
    set(launcher ${CMAKE_CURRENT_BINARY_DIR}/installed/${name})
    lumora_write_launcher(${launcher} ${name} "$here/runtime" "${arguments}")
    install(PROGRAMS ${launcher} DESTINATION ${folder})
    install(TARGETS ${name} RUNTIME DESTINATION ${folder})
    # The loader, the C and C++ libraries, and the engine with its backends; not what only its own tools need.
    file(GLOB libraries ${LUMORA_LLAMA_FOLDER}/lib*.so.*)
    list(FILTER libraries INCLUDE REGEX "/lib(c|m|mvec|gcc_s|stdc[+][+]|gomp|llama|mtmd|ggml|ggml-base|pthread|dl|rt)\\.so")
    install(PROGRAMS ${LUMORA_LLAMA_LOADER} DESTINATION ${folder}/runtime)
    install(FILES ${libraries} DESTINATION ${folder}/runtime)
    install(DIRECTORY ${LUMORA_LLAMA_BACKENDS} DESTINATION ${folder}/runtime/ggml)
endfunction()

function(lumora_add_llama_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;ARGUMENTS")
    add_executable(${name} ${arg_SOURCES})
    # Optimised in every build, and never with sanitizers, whose libraries the other loader would not find.
    target_compile_options(${name} PRIVATE -O2)
    target_link_libraries(${name} PRIVATE ${arg_LINKS} Lumora::llama lumora_warnings)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
    if(LUMORA_LLAMA_PREFIX)
        set_target_properties(${name} PROPERTIES OUTPUT_NAME ${name}.bin SKIP_BUILD_RPATH ON
            LUMORA_ARGUMENTS "${arg_ARGUMENTS}")
        lumora_quote_for_shell("${LUMORA_LLAMA_FOLDER}" runtime)
        lumora_write_launcher(${PROJECT_BINARY_DIR}/bin/${name} ${name} "${runtime}" "${arg_ARGUMENTS}")
    endif()
endfunction()
