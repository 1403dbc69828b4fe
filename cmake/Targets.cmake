# What every target of the project has in common.

add_library(TallyglassCompileOptions INTERFACE)
target_include_directories(TallyglassCompileOptions INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(TallyglassCompileOptions INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wextra-semi -Wconversion
    -Wno-sign-conversion)
if(TALLYGLASS_SANITIZERS)
    add_compile_options(-fsanitize=${TALLYGLASS_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TALLYGLASS_SANITIZERS})
endif()
if(TALLYGLASS_FUZZING)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The sources of the current folder and its rooms that belong to this platform.
function(tallyglass_sources result)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    if(APPLE)
        list(FILTER sources EXCLUDE REGEX "_linux\\.cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "_mac\\.cpp$")
    endif()
    set(${result} ${sources} PARENT_SCOPE)
endfunction()

# The headers that most files read.
set(TALLYGLASS_COMMON_HEADERS
    <algorithm> <chrono> <filesystem> <functional> <map> <memory> <mutex> <optional> <stop_token> <string> <variant>
    <vector> <fmt/format.h>)

# Has a target read headers once for all its files: tallyglass_precompile_headers(TARGET HEADER...), or
# tallyglass_precompile_headers(TARGET REUSE_FROM TARGET). Not with a compiler cache, which couldn't help then. That each
# file names the headers it needs is seen by clang-tidy, which reads none of these.
function(tallyglass_precompile_headers target)
    if(CMAKE_CXX_COMPILER_LAUNCHER)
        return()
    endif()
    if(ARGV1 STREQUAL "REUSE_FROM")
        target_precompile_headers(${target} ${ARGN})
    else()
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# One folder is one static library: tallyglass_library(NAME LIBRARY...).
function(tallyglass_library name)
    tallyglass_sources(sources)
    if(NOT sources)
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE TallyglassCompileOptions ${ARGN})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC TallyglassCompileOptions ${ARGN})
    if(CMAKE_AUTOMOC) # sees only headers that are sources too
        file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
        target_sources(${name} PRIVATE ${headers})
        file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp) # runs again for a new one
        qt_extract_metatypes(${name}) # so that the QML modules can describe its types
        tallyglass_precompile_headers(${name} <QGuiApplication> <QObject> <QProperty> <QString>
            ${TALLYGLASS_COMMON_HEADERS})
    elseif(name STREQUAL "TallyglassPlatform")
        tallyglass_precompile_headers(${name} ${TALLYGLASS_COMMON_HEADERS})
    else()
        tallyglass_precompile_headers(${name} REUSE_FROM TallyglassPlatform)
    endif()
endfunction()

# One thin main over those libraries: tallyglass_program(NAME MAIN LIBRARY...).
function(tallyglass_program name main)
    add_executable(${name} ${main})
    target_link_libraries(${name} PRIVATE TallyglassCompileOptions ${ARGN})
endfunction()
