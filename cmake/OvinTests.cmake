# How tests are built: ovin_add_test names the files that it builds, and ovin_check_tests_are_built fails the configuration
# when a test file exists that nothing builds, so that a test cannot be lost silently.

find_package(GTest REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# ovin_add_test(NAME [QT] SOURCES ... LINKS ...): one test program. To ctest it is one test; tools/count_tests.py counts those in
# it. Programs that use Qt are compiled with options of their own, and so have compiled headers of their own; those in another
# language have none.
function(ovin_add_test name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ovin_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
    if(ARG_QT)
        target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h> <QApplication> <QPainter>)
    elseif(NOT ARG_SOURCES MATCHES "\\.mm(;|$)")
        target_precompile_headers(${name} REUSE_FROM ovin_test_headers)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    ovin_count_as_built(${ARG_SOURCES})
endfunction()

# ovin_add_python_test(NAME SOURCE [ARGUMENT ...]): one test in Python, for what is not C++: the tools and the build itself.
# It says the same whatever the compiler does, so builds with sanitizers leave it out.
function(ovin_add_python_test name source)
    if(NOT OVIN_SANITIZE)
        add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/${source} ${ARGN})
    endif()
    ovin_count_as_built(${source})
endfunction()

# Records test files as built by some target.
function(ovin_count_as_built)
    foreach(source IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
        set_property(GLOBAL APPEND PROPERTY OVIN_BUILT_TEST_FILES ${source})
    endforeach()
endfunction()

# ovin_check_tests_are_built([LEAVE_OUT PART ...]): every *.cpp, *.mm and *.py below the current folder must be built, or run,
# by some target, but for those with such a part in their path, which this configuration does not build.
function(ovin_check_tests_are_built)
    cmake_parse_arguments(ARG "" "" "LEAVE_OUT" ${ARGN})
    file(GLOB_RECURSE present CONFIGURE_DEPENDS
        ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.mm ${CMAKE_CURRENT_SOURCE_DIR}/*.py)
    foreach(part IN LISTS ARG_LEAVE_OUT)
        list(FILTER present EXCLUDE REGEX ${part})
    endforeach()
    get_property(built GLOBAL PROPERTY OVIN_BUILT_TEST_FILES)
    list(REMOVE_ITEM present "" ${built})
    if(present)
        list(JOIN present "\n  " files)
        message(FATAL_ERROR "No target builds these test files:\n  ${files}")
    endif()
endfunction()

# ovin_add_desktop_test(NAME TARGET [OPTIONS ...] [COMMAND ...]): the program, or the command that runs it, as one test on a
# private desktop that is started with the options and consists of the programs of this very build.
function(ovin_add_desktop_test name target)
    cmake_parse_arguments(ARG "" "" "OPTIONS;COMMAND" ${ARGN})
    if(NOT ARG_COMMAND)
        set(ARG_COMMAND $<TARGET_FILE:${target}>)
    endif()
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/desktop/private-desktop ${ARG_OPTIONS} -- ${ARG_COMMAND})
    # The longest ones start first, so that nothing is left to wait for in the end.
    set_tests_properties(${name} PROPERTIES COST 100
        ENVIRONMENT "OVIN_MENU_BAR_AGENT=$<TARGET_FILE:MenuBarAgent>;OVIN_STATUS_ITEM=$<TARGET_FILE:status-item>")
    add_dependencies(${target} MenuBarAgent status-item)
endfunction()
