# Random scripts: the program that plays many, and the tests that play some with every run.
add_library(kelo_random_scripts STATIC
    script/RandomScriptCampaign.cpp script/RandomScriptGenerator.cpp script/RandomScriptScene.cpp)
target_include_directories(kelo_random_scripts PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(kelo_random_scripts PRIVATE kelo_options kelo_test_options PUBLIC kelo_viewer GTest::gtest)

add_executable(random_scripts script/RandomScriptMain.cpp)
target_link_libraries(random_scripts PRIVATE kelo_options kelo_test_options kelo_random_scripts)
add_dependencies(random_scripts kelo_resources)

kelo_test(random_script_tests QT APART
    SOURCES script/RandomScriptTest.cpp script/RandomScriptSeedsTest.cpp
    LINKS kelo_random_scripts)
target_compile_definitions(random_script_tests PRIVATE
    KELO_RANDOM_SCRIPTS_PROGRAM="$<TARGET_FILE:random_scripts>"
    KELO_VIEWER_PROGRAM="$<TARGET_FILE:treatment-viewer>"
    KELO_KEPT_SCRIPTS="${CMAKE_CURRENT_SOURCE_DIR}/script/kept"
    KELO_FAILED_SCRIPTS="${CMAKE_CURRENT_BINARY_DIR}/random-scripts")
add_dependencies(random_script_tests random_scripts treatment-viewer kelo_resources)
