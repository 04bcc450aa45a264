# What `cmake --install` puts under the prefix: the library, its public headers in
# include/keloOpenGL, the resource bundle, the programs, and the package that
# find_package(keloOpenGL) reads. The whole prefix can be moved afterwards.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/keloOpenGL)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)

install(TARGETS keloOpenGL EXPORT keloOpenGLTargets
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${KELO_BUNDLE_DIR} DESTINATION ${CMAKE_INSTALL_DATADIR})
install(EXPORT keloOpenGLTargets NAMESPACE keloOpenGL:: DESTINATION ${package_folder})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/keloOpenGLConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/keloOpenGLConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/PackageFolder.cpp.in
    DESTINATION ${package_folder})
install(FILES ${root}/LICENSE ${root}/README.md ${root}/CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR})
