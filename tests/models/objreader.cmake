kelo_test(objreader_tests
    SOURCES
        BakedLightTest.cpp
        OBJReaderTest.cpp
        OBJReaderNumbersTest.cpp
        OBJReaderFailureTest.cpp
        OBJReaderFileTest.cpp
        OBJReaderTextTest.cpp
    LINKS kelo_objreader)
target_compile_definitions(objreader_tests PRIVATE KELO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
