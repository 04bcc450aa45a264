# The treatment store, and a program that is killed while it writes.
add_executable(killed_writer killed_writer.cpp)
target_include_directories(killed_writer PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(killed_writer PRIVATE kelo_options kelo_viewer)

kelo_test(store_tests QT
    SOURCES
        TreatmentSessionTest.cpp
        TreatmentStoreKilledTest.cpp
        TreatmentStoreOpeningTest.cpp
        TreatmentStoreTest.cpp
        TreatmentStoreVersionsTest.cpp
        TreatmentStoreForeignTest.cpp
    LINKS kelo_viewer)
target_compile_definitions(store_tests PRIVATE
    KELO_KILLED_WRITER="$<TARGET_FILE:killed_writer>"
    KELO_STORED_VERSIONS="${CMAKE_CURRENT_SOURCE_DIR}/store")
add_dependencies(store_tests killed_writer)
