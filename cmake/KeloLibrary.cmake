# The library that a host links: all rooms in one, and what it is linked with itself.
include(KeloPublicHeaders)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui OpenGL UiTools Widgets)
find_package(PkgConfig REQUIRED)
pkg_check_modules(epoxy REQUIRED IMPORTED_TARGET epoxy)
pkg_check_modules(egl REQUIRED IMPORTED_TARGET egl)

# Installed programs find a shared library by their own place, so that the prefix can be moved.
file(RELATIVE_PATH library_folder ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${library_folder})

# kelo_installed_headers(LIST): the public headers as hosts include them, in the build tree, where hosts
# of this build find them and installations take them from. They are written anew when one of the tree's
# changes. LIST gets their paths.
function(kelo_installed_headers list)
    cmake_path(SET root NORMALIZE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/..)
    set(script ${root}/cmake/KeloInstalledHeaders.cmake)
    set(stamp ${PROJECT_BINARY_DIR}/installed-headers.stamp)
    list(TRANSFORM KELO_PUBLIC_HEADERS PREPEND ${root}/ OUTPUT_VARIABLE sources)
    list(TRANSFORM KELO_INSTALLED_HEADERS PREPEND ${PROJECT_BINARY_DIR}/include/keloOpenGL/
        OUTPUT_VARIABLE headers)
    # One process writes them all; the stamp tells that it ran, for it leaves unchanged ones alone.
    add_custom_command(OUTPUT ${stamp} BYPRODUCTS ${headers}
        COMMAND ${CMAKE_COMMAND} -DFOLDER=${PROJECT_BINARY_DIR}/include -P ${script}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${sources} ${script} ${root}/cmake/KeloPublicHeaders.cmake
        COMMENT "Writing the headers for hosts")
    add_custom_target(kelo_installed_headers ALL DEPENDS ${stamp})
    set(${list} ${headers} PARENT_SCOPE)
endfunction()

# kelo_library(OBJECT...)
#
# Makes the target keloOpenGL of compiled objects: a static library, or a shared one where
# BUILD_SHARED_LIBS is on. The objects are the same for both, so that what is hidden in the shared
# one is settled by KELO_EXPORT alone.
#
# What links it finds the headers for hosts. This project's own targets have the root before them on
# their include path, and write all includes from there.
function(kelo_library)
    add_library(keloOpenGL ${ARGN})
    add_library(keloOpenGL::keloOpenGL ALIAS keloOpenGL)
    kelo_installed_headers(headers)
    target_sources(keloOpenGL PUBLIC
        FILE_SET HEADERS BASE_DIRS ${PROJECT_BINARY_DIR}/include FILES ${headers})
    add_dependencies(keloOpenGL kelo_installed_headers)
    # A host's own default may be older than what the headers are written in.
    target_compile_features(keloOpenGL PUBLIC cxx_std_20)
    target_link_libraries(keloOpenGL
        PUBLIC Qt6::Core Qt6::Gui Qt6::OpenGL Qt6::Widgets Qt6::UiTools
            PkgConfig::epoxy PkgConfig::egl
        PRIVATE ${CMAKE_DL_LIBS})
    # Before 1.0 every minor version may change the interface, and so the name that hosts load.
    set_target_properties(keloOpenGL PROPERTIES
        LINKER_LANGUAGE CXX
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    if(KELO_SANITIZE)
        target_link_options(keloOpenGL PUBLIC -fsanitize=${KELO_SANITIZE})
    endif()
endfunction()
