# The current folder and its rooms as one QML module, Tallyglass.NAME, and one static library, TallyglassNAME, with the
# C++ types that the QML binds: tallyglass_qml_module(NAME LIBRARY...). Who links the library imports the module.
function(tallyglass_qml_module name)
    set(target Tallyglass${name})
    tallyglass_sources(sources)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    file(GLOB_RECURSE qml_files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.qml)
    set(dependencies QtQuick)
    get_property(modules GLOBAL PROPERTY TALLYGLASS_QML_MODULES)
    foreach(module IN LISTS modules)
        if(Tallyglass${module} IN_LIST ARGN)
            list(APPEND dependencies Tallyglass.${module})
        endif()
    endforeach()
    qt_add_library(${target} STATIC)
    qt_add_qml_module(${target}
        URI Tallyglass.${name}
        VERSION 1.0
        RESOURCE_PREFIX /
        DEPENDENCIES ${dependencies}
        SOURCES ${sources} ${headers}
        QML_FILES ${qml_files}
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/Tallyglass/${name})
    target_link_libraries(${target} PUBLIC TallyglassCompileOptions Qt6::Quick ${ARGN} PRIVATE fmt::fmt)
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp) # runs again for a new header
    foreach(header IN LISTS headers) # the generated registrations include headers by their file names
        get_filename_component(folder ${header} DIRECTORY)
        target_include_directories(${target} PRIVATE ${folder})
    endforeach()
    if(TARGET TallyglassContext AND NOT name STREQUAL "Context")
        tallyglass_precompile_headers(${target} REUSE_FROM TallyglassContext)
    else()
        tallyglass_precompile_headers(${target}
            <QAbstractListModel> <QGuiApplication> <QProperty> <QQmlEngine> <QQuickItem> <QQuickWindow>
            ${TALLYGLASS_COMMON_HEADERS})
    endif()
    tallyglass_compile_generated_qml(${target})
    set_property(GLOBAL APPEND PROPERTY TALLYGLASS_QML_MODULES ${name})
endfunction()

# A dozen of the small files that Qt generates from QML are compiled as one, since each alone would read all of Qt's
# headers. They aren't held to our warnings.
function(tallyglass_compile_generated_qml target)
    get_target_property(generated ${target} SOURCES)
    list(FILTER generated INCLUDE REGEX "/qmlcache/")
    set(index 0)
    foreach(file IN LISTS generated)
        math(EXPR group "${index} / 12")
        math(EXPR index "${index} + 1")
        set_source_files_properties(${file} PROPERTIES UNITY_GROUP generated${group})
    endforeach()
    set(lenience)
    foreach(warning all extra conversion old-style-cast shadow extra-semi unused-variable unused-but-set-variable)
        string(APPEND lenience "#pragma GCC diagnostic ignored \"-W${warning}\"\n")
    endforeach()
    set_target_properties(${target} PROPERTIES
        UNITY_BUILD ON UNITY_BUILD_MODE GROUP UNITY_BUILD_CODE_BEFORE_INCLUDE "${lenience}")
    # What registers the types runs once, and takes long to optimize.
    string(TOLOWER ${target} lower)
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${lower}_qmltyperegistrations.cpp
        PROPERTIES COMPILE_OPTIONS -O0 SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# Has a program find all QML modules of the project: links their plugins, and imports them in a source of its own.
function(tallyglass_import_qml_modules target)
    get_property(modules GLOBAL PROPERTY TALLYGLASS_QML_MODULES)
    set(imports "#include <QtQml/qqmlextensionplugin.h>\n\n")
    foreach(module IN LISTS modules)
        target_link_libraries(${target} PRIVATE Tallyglass${module}plugin)
        string(APPEND imports "Q_IMPORT_QML_PLUGIN(Tallyglass_${module}Plugin)\n")
    endforeach()
    file(CONFIGURE OUTPUT ${target}_modules.cpp CONTENT "${imports}")
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_modules.cpp)
endfunction()
