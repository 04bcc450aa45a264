kelo_test(tools_meshgen_patient
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/MeshgenBiteTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenCrowdedTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenGumsTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenPatientFileTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenPatientTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenReliefTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenToothTest.cpp
    LINKS kelo_meshgen kelo_meshcheck)
target_compile_definitions(tools_meshgen_patient PRIVATE
    KELO_MESH_TABLES="${PROJECT_SOURCE_DIR}/resources/meshes"
    KELO_PATIENTS="${PROJECT_SOURCE_DIR}/resources/patients")
# The meshes together with the library's bands.
kelo_test(tools_meshgen_bands
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/MeshgenBandsTest.cpp
    LINKS kelo_meshgen kelo_banddepth)
target_compile_definitions(tools_meshgen_bands PRIVATE
    KELO_MESH_TABLES="${PROJECT_SOURCE_DIR}/resources/meshes"
    KELO_PATIENTS="${PROJECT_SOURCE_DIR}/resources/patients")
