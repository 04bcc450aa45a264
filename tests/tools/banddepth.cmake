kelo_test(banddepth_tests
    SOURCES BandDepthMeshTest.cpp BandDepthReportTest.cpp BandDepthSceneTest.cpp
    LINKS kelo_banddepth)
target_compile_definitions(banddepth_tests PRIVATE KELO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
