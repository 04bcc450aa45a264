# Installs the build under a prefix of its own, builds a host against that, and runs it without a
# display. Called with SOURCE_DIR, BUILD_DIR, WORK_DIR, GENERATOR, COMPILER, BUILD_TYPE, LINK_FLAGS.

# run(WHAT COMMAND...): stops with WHAT and what the command said when it fails.
function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status
        OUTPUT_VARIABLE output ERROR_VARIABLE output COMMAND_ECHO NONE)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${what} failed (${status}):\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run("Installing" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

foreach(file IN ITEMS
        include/keloOpenGL/keloOpenGL/keloOpenGL.h
        include/keloOpenGL/geometry/Matrix.h
        share/keloOpenGL/bundle-identifier
        share/keloOpenGL/_tooth_8.obj)
    if(NOT EXISTS ${prefix}/${file})
        message(FATAL_ERROR "${file} was not installed")
    endif()
endforeach()
file(GLOB_RECURSE strays ${prefix}/include/*.cpp ${prefix}/include/*Test.h)
if(strays)
    message(FATAL_ERROR "these are installed and should not be: ${strays}")
endif()

# The host: the example that the documents show, outside of this tree.
file(COPY ${SOURCE_DIR}/tests/house/consumer/CMakeLists.txt DESTINATION ${WORK_DIR}/host)
file(COPY ${SOURCE_DIR}/examples/embed/main.cpp DESTINATION ${WORK_DIR}/host)
run("Configuring the host" ${CMAKE_COMMAND} -S ${WORK_DIR}/host -B ${WORK_DIR}/host-build
    -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_INSTALL_PREFIX=${prefix}
    -DCMAKE_EXE_LINKER_FLAGS=${LINK_FLAGS})
run("Building the host" ${CMAKE_COMMAND} --build ${WORK_DIR}/host-build)
run("Installing the host" ${CMAKE_COMMAND} --install ${WORK_DIR}/host-build)

# Only the installed resources may serve, so the folders that they were made in are out of reach:
# the host lies in the prefix and is started from elsewhere.
run("Running the host" ${CMAKE_COMMAND} -E chdir ${WORK_DIR}
    ${CMAKE_COMMAND} -E env --unset=DISPLAY --unset=WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen
    ${prefix}/bin/embed ${WORK_DIR}/host.png)
run("Checking the host's picture" ${BUILD_DIR}/bin/outputcheck ${WORK_DIR}/host.png)
run("Running the installed viewer" ${prefix}/bin/treatment-viewer --headless --size 320x240
    --picture ${WORK_DIR}/viewer.png --export ${WORK_DIR}/viewer.obj)
run("Checking the viewer's files"
    ${BUILD_DIR}/bin/outputcheck ${WORK_DIR}/viewer.png ${WORK_DIR}/viewer.obj)
