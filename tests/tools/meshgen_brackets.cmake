# Brackets, lingual buttons and the meshes that meshgen puts them together from.
kelo_test(tools_meshgen_brackets_test
    SOURCES
        MeshgenBracketMeshTest.cpp
        MeshgenBracketPatientTest.cpp
        MeshgenBracketTest.cpp
    LINKS kelo_meshgen)
target_compile_definitions(tools_meshgen_brackets_test PRIVATE
    KELO_MESH_TABLES="${PROJECT_SOURCE_DIR}/resources/meshes"
    KELO_PATIENTS="${PROJECT_SOURCE_DIR}/resources/patients")
