# How Ovin's targets are made: one library per folder, with the language and the warnings that all code shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(APPLE)
    enable_language(OBJCXX)
    set(CMAKE_OBJCXX_STANDARD 20)
    set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
    set(CMAKE_OBJCXX_EXTENSIONS OFF)
    add_compile_options($<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

set(OVIN_SANITIZE "" CACHE STRING "Sanitizers to build everything with, for example address,undefined")

add_library(ovin_options INTERFACE)
target_include_directories(ovin_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
target_compile_options(ovin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wcast-qual -Wformat=2 -Wimplicit-fallthrough)
# Mostly Ovin waits, and its code is memory that it shares with nobody. Where it works, and in what tests and benchmarks work
# with, speed counts.
set(fast ovin_discovery ovin_memory ovin_platform ovin_threads)
target_compile_options(ovin_options INTERFACE
    "$<$<AND:$<CONFIG:Release>,$<NOT:$<IN_LIST:$<TARGET_PROPERTY:NAME>,${fast}>>>:-Os>")
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees an overlapping copy in every "text" + std::to_string(...) that it optimises (GCC bug 105651).
    target_compile_options(ovin_options INTERFACE -Wno-restrict)
endif()
if(OVIN_SANITIZE)
    target_compile_options(ovin_options INTERFACE
        -fsanitize=${OVIN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(ovin_options INTERFACE -fsanitize=${OVIN_SANITIZE})
    target_compile_definitions(ovin_options INTERFACE OVIN_SANITIZED)
    if(OVIN_SANITIZE MATCHES undefined AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
        target_compile_options(ovin_options INTERFACE -fsanitize=float-cast-overflow,implicit-integer-truncation)
    endif()
endif()

# ovin_add_folder(NAME [SOURCES ...] [LINKS ...]): the library of the current folder. A folder without sources yet is an
# interface library, which still carries what the folder may use.
function(ovin_add_folder name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    if(ARG_SOURCES)
        add_library(${name} STATIC ${ARG_SOURCES})
        target_link_libraries(${name} PUBLIC ovin_options ${ARG_LINKS})
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ovin_options ${ARG_LINKS})
    endif()
endfunction()
