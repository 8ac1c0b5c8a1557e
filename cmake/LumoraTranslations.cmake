# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# The catalogues of the interface's texts, compiled to where the program looks for them, seen from bin.
find_package(Qt6LinguistTools 6.4 QUIET)
if(NOT Qt6LinguistTools_FOUND)
    message(STATUS "Qt's translation tools are missing (qt6-tools-dev, qt6-l10n-tools): Lumora will speak English only")
endif()

# lumora_add_translations(TARGET FOLDER): whatever needs the target gets FOLDER/*.ts compiled, where there are tools for
# it. The target update-translations brings the catalogues up to date with the sources.
function(lumora_add_translations target folder)
    if(NOT Qt6LinguistTools_FOUND)
        return()
    endif()
    file(GLOB catalogues CONFIGURE_DEPENDS ${folder}/*.ts)
    set(destination share/lumora/translations)
    set_source_files_properties(${catalogues} PROPERTIES OUTPUT_LOCATION ${PROJECT_BINARY_DIR}/${destination})
    qt_add_lrelease(${target} TS_FILES ${catalogues} OPTIONS -silent QM_FILES_OUTPUT_VARIABLE compiled)
    install(FILES ${compiled} DESTINATION ${destination})
    add_custom_target(update-translations
        COMMAND Qt6::lupdate -locations none -no-obsolete src -ts ${catalogues}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endfunction()
