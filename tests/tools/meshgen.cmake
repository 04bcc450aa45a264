kelo_test(tools_meshgen_patient
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/MeshgenPatientTest.cpp
            ${CMAKE_CURRENT_LIST_DIR}/MeshgenToothTest.cpp
    LINKS kelo_meshgen)
target_compile_definitions(tools_meshgen_patient PRIVATE
    KELO_MESH_PARAMETERS="${PROJECT_SOURCE_DIR}/resources/meshes")
