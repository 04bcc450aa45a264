include(GoogleTest)

# kelo_test(NAME [QT] SOURCES file... [LINKS target...] [LABELS label...])
#
# QT gives the program an application object and a guard that fails a test on an unannounced Qt
# warning; without it the program is plain C++ and GoogleTest.
# One test program a room. Every test runs in a process of its own, so that process-wide counters
# start afresh; the label `window` marks programs that need an X display (test.sh starts one).
function(kelo_test NAME)
    cmake_parse_arguments(TEST "QT" "" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${NAME} ${TEST_SOURCES})
    target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${NAME} PRIVATE kelo_options ${TEST_LINKS} GTest::gtest)
    if(TEST_QT)
        target_link_libraries(${NAME} PRIVATE kelo_qt_test_main)
    else()
        target_link_libraries(${NAME} PRIVATE GTest::gtest_main)
    endif()
    set(environment "LC_ALL=C.UTF-8")
    if(NOT "window" IN_LIST TEST_LABELS)
        list(APPEND environment "QT_QPA_PLATFORM=offscreen")
    endif()
    if(KELO_SANITIZE)
        list(APPEND environment
            "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp"
            "ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1"
            "UBSAN_OPTIONS=print_stacktrace=1"
            "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp")
    endif()
    gtest_discover_tests(${NAME}
        TEST_PREFIX "${NAME}."
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}" LABELS "${TEST_LABELS}")
endfunction()
