# The sample patient's pictures, compared with the kept ones.
kelo_test(picture_tests QT
    SOURCES treatment/PictureTest.cpp ${PROJECT_SOURCE_DIR}/tests/support/PictureComparison.cpp
    LINKS kelo_viewer)
target_compile_definitions(picture_tests PRIVATE
    KELO_KEPT_PICTURES="${CMAKE_CURRENT_SOURCE_DIR}/treatment/pictures"
    KELO_BUILD_DIR="${PROJECT_BINARY_DIR}")
add_dependencies(picture_tests kelo_resources)
