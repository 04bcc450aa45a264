kelo_test(lightbake_tests
    SOURCES LightbakeFolderTest.cpp LightbakeOcclusionTest.cpp LightbakeToneTest.cpp
    LINKS kelo_lightbake)
target_compile_definitions(lightbake_tests PRIVATE
    KELO_BUNDLE="${PROJECT_BINARY_DIR}/share/keloOpenGL")
add_dependencies(lightbake_tests kelo_resources)
