# The treatment store, and a program that is killed while it writes.
add_executable(killed_writer store/killed_writer.cpp)
target_include_directories(killed_writer PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(killed_writer PRIVATE kelo_options kelo_viewer)

find_package(Qt6 REQUIRED COMPONENTS Network) # the claim on a database is a local socket
kelo_test(store_tests QT
    SOURCES
        store/DatabaseClaimTest.cpp
        store/ElasticAttributesTest.cpp
        store/ElasticMergeTest.cpp
        store/TreatmentStoreForeignTest.cpp
        store/TreatmentStoreKilledTest.cpp
        store/TreatmentStoreOpeningTest.cpp
        store/TreatmentStoreTest.cpp
        store/TreatmentStoreVersionsTest.cpp
        treatment/TreatmentSessionTest.cpp
        treatment/TreatmentSessionTimingTest.cpp
    LINKS kelo_viewer Qt6::Network)
target_compile_definitions(store_tests PRIVATE
    KELO_KILLED_WRITER="$<TARGET_FILE:killed_writer>"
    KELO_SESSION_WRITER="$<TARGET_FILE:session_writer>"
    KELO_STORED_VERSIONS="${CMAKE_CURRENT_SOURCE_DIR}/store/versions")
add_dependencies(store_tests killed_writer session_writer)

# Programs that are killed in steady work, and two that work on one note.
add_executable(session_writer treatment/session_writer.cpp)
target_include_directories(session_writer PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(session_writer PRIVATE kelo_options kelo_viewer GTest::gtest)

kelo_test(store_campaign_tests QT APART
    SOURCES
        treatment/TreatmentSessionKilledTest.cpp
    LINKS kelo_viewer
    LABELS slow)
target_compile_definitions(store_campaign_tests PRIVATE
    KELO_SESSION_WRITER="$<TARGET_FILE:session_writer>")
add_dependencies(store_campaign_tests session_writer)

# A second start on a database, on a display.
kelo_test(second_start_tests QT APART
    SOURCES
        app/SecondStartTest.cpp
    LINKS kelo_viewer
    LABELS window)
target_compile_definitions(second_start_tests PRIVATE
    KELO_VIEWER_PROGRAM="$<TARGET_FILE:treatment-viewer>")
add_dependencies(second_start_tests treatment-viewer kelo_resources)
