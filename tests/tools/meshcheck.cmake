find_package(nlohmann_json REQUIRED)
kelo_test(meshcheck_tests
    SOURCES MeshcheckTest.cpp MeshcheckStrictTest.cpp
    LINKS kelo_meshcheck_command nlohmann_json::nlohmann_json)
target_compile_definitions(meshcheck_tests PRIVATE KELO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
