# Installs the library of one kind, moves the installation elsewhere, builds hosts against it, and runs
# them without a display. Called with KIND (static or shared), SOURCE_DIR, BUILD_DIR, WORK_DIR,
# GENERATOR, COMPILER, BUILD_TYPE, LINK_FLAGS, VERSION, NM and READELF; for the shared kind
# with OBJECTS, the list of the build's objects.

# run(WHAT COMMAND...): stops with WHAT and what the command said when it fails; otherwise leaves its
# standard output in `output`.
function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status
        OUTPUT_VARIABLE output ERROR_VARIABLE errors COMMAND_ECHO NONE)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${what} failed (${status}):\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# run_program(WHAT PROGRAM ARGUMENT...): from a folder in which nothing lies, without a display.
function(run_program what)
    run(${what} ${CMAKE_COMMAND} -E chdir ${WORK_DIR}/empty
        ${CMAKE_COMMAND} -E env --unset=DISPLAY --unset=WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen
        ${ARGN})
    set(output "${output}" PARENT_SCOPE)
endfunction()

# configure(WHAT SOURCE_FOLDER BUILD_FOLDER OPTION...)
function(configure what source build)
    run("Configuring ${what}" ${CMAKE_COMMAND} -S ${source} -B ${build} -G ${GENERATOR}
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
        -DCMAKE_EXE_LINKER_FLAGS=${LINK_FLAGS} -DCMAKE_SHARED_LINKER_FLAGS=${LINK_FLAGS} ${ARGN})
    run("Building ${what}" ${CMAKE_COMMAND} --build ${build} -j2)
endfunction()

function(expect_file file)
    if(NOT EXISTS ${prefix}/${file})
        message(FATAL_ERROR "${file} was not installed")
    endif()
endfunction()

# Nothing that is installed may say where it was made or first installed.
function(expect_no_old_places)
    file(GLOB files ${prefix}/lib/cmake/keloOpenGL/* ${prefix}/lib/*/cmake/keloOpenGL/*)
    if(NOT files)
        message(FATAL_ERROR "the package was not installed")
    endif()
    foreach(file IN LISTS files)
        file(READ ${file} content)
        foreach(place IN ITEMS ${first_prefix} ${SOURCE_DIR}/ ${BUILD_DIR})
            string(FIND "${content}" "${place}" position)
            if(NOT position EQUAL -1)
                message(FATAL_ERROR "${file} names ${place}")
            endif()
        endforeach()
    endforeach()
endfunction()

# The names of a shared library's files, and what can be linked from outside.
function(expect_shared_library)
    string(REGEX MATCH "^[0-9]+\\.[0-9]+" minor_version ${VERSION})
    file(GLOB_RECURSE library ${prefix}/libkeloOpenGL.so.${VERSION})
    if(NOT library)
        message(FATAL_ERROR "libkeloOpenGL.so.${VERSION} was not installed")
    endif()
    cmake_path(GET library PARENT_PATH folder)
    file(READ_SYMLINK ${folder}/libkeloOpenGL.so name)
    if(NOT name STREQUAL "libkeloOpenGL.so.${minor_version}")
        message(FATAL_ERROR "libkeloOpenGL.so leads to ${name}")
    endif()
    run("Reading the library's name" ${READELF} -d ${library})
    if(NOT output MATCHES "SONAME[^\n]*\\[libkeloOpenGL\\.so\\.${minor_version}\\]")
        message(FATAL_ERROR "the library's own name is not that of version ${minor_version}:\n${output}")
    endif()
    run("Reading the library's symbols" ${NM} -DC --defined-only ${library})
    foreach(given IN ITEMS "T kelo::DXOpenGL::loadTextures()" "T kelo::loadOBJFile(char const*, kelo"
            "kelo::elasticConfigNamingAction" "typeinfo for kelo::OpenGLUnavailable")
        string(FIND "${output}" "${given}" position)
        if(position EQUAL -1)
            message(FATAL_ERROR "the shared library does not give ${given}")
        endif()
    endforeach()
    # Of headers that are not installed.
    foreach(inner IN ITEMS "kelo::fillNativeMenu" "kelo::ViewContainer" "kelo::TreatmentMenus"
            "kelo::OBJReadingLimits")
        string(FIND "${output}" "${inner}" position)
        if(NOT position EQUAL -1)
            message(FATAL_ERROR "the shared library gives ${inner}, which is its own affair")
        endif()
    endforeach()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/empty)
set(first_prefix ${WORK_DIR}/first-prefix)
set(prefix ${WORK_DIR}/moved/prefix)

set(installed_build ${BUILD_DIR})
if(KIND STREQUAL "shared")
    set(installed_build ${WORK_DIR}/library-build)
    configure("the shared library" ${SOURCE_DIR}/tests/house/shared ${installed_build}
        -DVERSION=${VERSION} -DOBJECTS=${OBJECTS} -DKELO_BUNDLE_DIR=${BUILD_DIR}/share/keloOpenGL)
endif()
run("Installing" ${CMAKE_COMMAND} --install ${installed_build} --prefix ${first_prefix})
file(MAKE_DIRECTORY ${WORK_DIR}/moved)
file(RENAME ${first_prefix} ${prefix})

expect_file(include/keloOpenGL/keloOpenGL.h)
expect_file(include/keloOpenGL/geometry/Matrix.h)
expect_file(include/keloOpenGL/treatment/DXOpenGL.h)
file(GLOB names RELATIVE ${prefix}/include ${prefix}/include/*)
if(NOT names STREQUAL "keloOpenGL")
    message(FATAL_ERROR "the include path has ${names}, where one name was expected")
endif()
expect_file(share/keloOpenGL/bundle-identifier)
expect_file(share/keloOpenGL/_tooth_8.obj)
expect_file(share/keloOpenGL/_tooth_8.light)
file(GLOB_RECURSE strays ${prefix}/include/*.cpp ${prefix}/include/*Test.h
    ${prefix}/include/OBJReaderDetail.h)
if(strays)
    message(FATAL_ERROR "these are installed and should not be: ${strays}")
endif()
expect_no_old_places()
if(KIND STREQUAL "shared")
    expect_shared_library()
endif()

# Hosts outside of this tree, which stay in their own build folder: only the package can tell them
# where the resources are.
file(COPY ${SOURCE_DIR}/examples/ DESTINATION ${WORK_DIR}/examples)
set(programs ${WORK_DIR}/examples-build)
configure("the examples" ${WORK_DIR}/examples ${programs} -DCMAKE_PREFIX_PATH=${prefix})
run_program("Running the minimal host" ${programs}/minimal-host ${WORK_DIR}/host.png)
run("Checking the host's picture" ${BUILD_DIR}/bin/outputcheck ${WORK_DIR}/host.png)
run_program("Running the observer" ${programs}/change-observer --demonstrate)
set(expected "elastic placed over 6,27,28
elastic over 6,27,28 is now 1/8\" 3.5 oz
bracket 27 removed
elastics shortened around 27
button 3l removed
tooth 18 hidden
elastic removed from 6,28
to store: bracket 8 has the colour 1
to store: bracket 27 is not placed
to store: button 3l is not placed
")
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The observer was expected to say\n${expected}but said\n${output}")
endif()

set(own ${WORK_DIR}/own-headers-build)
configure("a host with own headers" ${SOURCE_DIR}/tests/house/hosts/own-headers ${own}
    -DCMAKE_PREFIX_PATH=${prefix})
run_program("Running the host with own headers" ${own}/own-headers)
file(READ ${SOURCE_DIR}/tests/house/hosts/own-headers/expected.txt expected)
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The host was expected to say\n${expected}but said\n${output}")
endif()

if(KIND STREQUAL "static")
    configure("every header alone" ${SOURCE_DIR}/tests/house/headers ${WORK_DIR}/headers-build
        -DCMAKE_PREFIX_PATH=${prefix} -DKELO_PREFIX=${prefix} -DCMAKE_CXX_FLAGS=-O0)
endif()
run_program("Running the installed viewer" ${prefix}/bin/treatment-viewer --headless
    --size 320x240 --picture ${WORK_DIR}/viewer.png --export ${WORK_DIR}/viewer.obj)
run("Checking the viewer's files"
    ${BUILD_DIR}/bin/outputcheck ${WORK_DIR}/viewer.png ${WORK_DIR}/viewer.obj)
