# What `cmake --install` puts under the prefix: the library, its headers under include/keloOpenGL,
# the resource bundle, the programs, and the package that find_package(keloOpenGL) reads.
include(CMakePackageConfigHelpers)

# A host's own default may be older than what the headers are written in.
target_compile_features(keloOpenGL PUBLIC cxx_std_20)
install(TARGETS keloOpenGL EXPORT keloOpenGLTargets
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/keloOpenGL)
install(DIRECTORY geometry platform keloModel models document keloOpenGL
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/keloOpenGL
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${KELO_BUNDLE_DIR} DESTINATION ${CMAKE_INSTALL_DATADIR})
install(EXPORT keloOpenGLTargets NAMESPACE keloOpenGL::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/keloOpenGL)
configure_package_config_file(cmake/keloOpenGLConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/keloOpenGL
    PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/keloOpenGL)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
