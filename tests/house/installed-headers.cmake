# What cmake/KeloInstalledHeaders.cmake makes of public headers, tried on a small tree. Called with
# SOURCE_DIR and WORK_DIR.

# Only the first two lines include what is ours.
set(scene "#include \"models/Color.h\" // \"a\"; [b
#  include \"models/Inner.h\"
#include <vector>
// #include \"models/Inner.h\" in a text
const char *name = \"models/Color.h\";
")
set(installed_scene "#include <keloOpenGL/models/Color.h> // \"a\"; [b
#include <keloOpenGL/models/Inner.h>
#include <vector>
// #include \"models/Inner.h\" in a text
const char *name = \"models/Color.h\";
")

# write_headers(HEADER...): of a tree in which these are public; sets `status` and `errors`.
function(write_headers)
    file(READ ${SOURCE_DIR}/cmake/KeloPublicHeaders.cmake lists)
    list(JOIN ARGN "\n    " headers)
    string(REGEX REPLACE "set\\(KELO_PUBLIC_HEADERS[^)]*\\)"
        "set(KELO_PUBLIC_HEADERS\n    ${headers})" lists "${lists}")
    file(WRITE ${WORK_DIR}/cmake/KeloPublicHeaders.cmake "${lists}")
    execute_process(COMMAND ${CMAKE_COMMAND} -DFOLDER=${WORK_DIR}/include
            -P ${WORK_DIR}/cmake/KeloInstalledHeaders.cmake
        RESULT_VARIABLE status ERROR_VARIABLE errors)
    set(status "${status}" PARENT_SCOPE)
    set(errors "${errors}" PARENT_SCOPE)
endfunction()

# expect_refusal(SENTENCE HEADER...)
function(expect_refusal sentence)
    write_headers(${ARGN})
    string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
    string(FIND "${errors}" "${sentence}" position)
    if(status EQUAL 0 OR position EQUAL -1)
        message(FATAL_ERROR "expected the error \"${sentence}\" but got (${status}): ${errors}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
file(COPY ${SOURCE_DIR}/cmake/KeloInstalledHeaders.cmake DESTINATION ${WORK_DIR}/cmake)
foreach(header IN ITEMS models/Color.h models/Inner.h view/Scene.h)
    file(WRITE ${WORK_DIR}/${header} "#pragma once\n")
endforeach()
file(WRITE ${WORK_DIR}/keloOpenGL/view/Scene.h "${scene}")

expect_refusal("keloOpenGL/view/Scene.h is public and includes models/Inner.h, which is not"
    models/Color.h keloOpenGL/view/Scene.h)
expect_refusal("two public headers would have one name"
    models/Color.h models/Inner.h keloOpenGL/view/Scene.h view/Scene.h)

file(WRITE ${WORK_DIR}/include/keloOpenGL/models/Stray.h "")
write_headers(models/Color.h models/Inner.h keloOpenGL/view/Scene.h)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the headers were not written: ${errors}")
endif()
file(READ ${WORK_DIR}/include/keloOpenGL/view/Scene.h content)
if(NOT content STREQUAL installed_scene)
    message(FATAL_ERROR "expected\n${installed_scene}but it is\n${content}")
endif()
if(EXISTS ${WORK_DIR}/include/keloOpenGL/models/Stray.h)
    message(FATAL_ERROR "a header that is not public was left")
endif()
