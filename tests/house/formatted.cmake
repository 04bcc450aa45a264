# Fails where a source or header is not as clang-format 14 writes it. Called with SOURCE_DIR, WORK_DIR
# and CLANG_FORMAT.

# unformatted(FILE...): leaves what clang-format says of the files in `complaints`, nothing if they are
# formatted.
function(unformatted)
    execute_process(COMMAND ${CLANG_FORMAT} --dry-run -Werror --style=file:${SOURCE_DIR}/.clang-format
            ${ARGN}
        RESULT_VARIABLE status ERROR_VARIABLE said)
    set(complaints "")
    if(NOT status EQUAL 0)
        set(complaints "${said}")
    endif()
    set(complaints "${complaints}" PARENT_SCOPE)
endfunction()

# What is not formatted is found.
file(WRITE ${WORK_DIR}/planted.cpp "int  planted( ) { return 1 ; }\n")
unformatted(${WORK_DIR}/planted.cpp)
if(NOT complaints MATCHES "planted.cpp")
    message(FATAL_ERROR "a file that is not formatted passed")
endif()

# Rooms are the folders with a list for CMake; build folders and what lies beside the project are none.
file(GLOB lists ${SOURCE_DIR}/*/CMakeLists.txt)
foreach(list IN LISTS lists)
    cmake_path(GET list PARENT_PATH room)
    file(GLOB_RECURSE files ${room}/*.cpp ${room}/*.h)
    list(APPEND sources ${files})
endforeach()
list(LENGTH sources count)
if(count LESS 100)
    message(FATAL_ERROR "only ${count} sources were found in ${SOURCE_DIR}")
endif()
unformatted(${sources})
if(complaints)
    message(FATAL_ERROR "clang-format -i is due:\n${complaints}")
endif()
