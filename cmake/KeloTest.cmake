include(GoogleTest)

# kelo_test_options: for code of tests, which is compiled far more often than it runs. Lines but no
# variables in the debug information, and little optimisation, halve its compilation. Warnings about the
# same short name in two tests of a batch are no findings; the preset `alone` has them on. Linked after
# kelo_options, whose switches it overrides.
add_library(kelo_test_options INTERFACE)
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
    target_compile_options(kelo_test_options INTERFACE -O1 -g1)
endif()
if(KELO_QUICK_BUILD)
    target_compile_options(kelo_test_options INTERFACE -Wno-shadow -Wno-subobject-linkage)
endif()

# kelo_test(NAME [QT] [APART] SOURCES file... [LINKS target...] [LABELS label...])
#
# QT gives the program an application object and a guard that fails a test on an unannounced Qt
# warning; without it the program is plain C++ and GoogleTest. The environment that the sanitizers
# want is set by test.sh and by the test presets.
# One test program a room, and one process a program. APART gives every test a process of its own, for
# those that end processes or count what a process has; so does the label `window`, which marks programs
# that need an X display (test.sh starts one): what one test leaves on a display disturbs the next.
function(kelo_test NAME)
    cmake_parse_arguments(TEST "QT;APART" "" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${NAME} ${TEST_SOURCES})
    target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${NAME} PRIVATE kelo_options kelo_test_options ${TEST_LINKS} GTest::gtest)
    if(TEST_QT)
        target_link_libraries(${NAME} PRIVATE kelo_qt_test_main)
    else()
        target_link_libraries(${NAME} PRIVATE GTest::gtest_main)
    endif()
    if("window" IN_LIST TEST_LABELS)
        set(TEST_APART ON)
    endif()
    set(properties TIMEOUT 300)
    if("window" IN_LIST TEST_LABELS)
        target_compile_definitions(${NAME} PRIVATE KELO_TEST_ON_DISPLAY)
    endif()
    if(TEST_LABELS)
        list(APPEND properties LABELS "${TEST_LABELS}")
    endif()
    # One display has one pointer and one keyboard: two such programs at a time disturb each other.
    if("window" IN_LIST TEST_LABELS)
        list(APPEND properties RESOURCE_LOCK display)
    endif()
    if(NOT TEST_APART)
        add_test(NAME ${NAME} COMMAND ${NAME})
        # The sanitizers slow a whole program down; the longest ones start first.
        set_tests_properties(${NAME} PROPERTIES ${properties} TIMEOUT 1500 COST 10)
        return()
    endif()
    gtest_discover_tests(${NAME}
        TEST_PREFIX "${NAME}."
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES ${properties})
endfunction()
