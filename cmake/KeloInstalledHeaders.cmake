# Writes the public headers as hosts include them: cmake -DFOLDER=... -P KeloInstalledHeaders.cmake
#
# In the tree includes are written from the root ("models/Color.h"); in FOLDER/keloOpenGL the same line
# reads <keloOpenGL/models/Color.h>, and nothing else differs. Fails where a public header includes one
# that is not public, or two headers would have one name. Files that are right already keep their time,
# so that no host compiles anew for nothing; others are removed.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/KeloPublicHeaders.cmake)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
set(folder ${FOLDER}/keloOpenGL)

# write_installed(HEADER NAME): HEADER of the tree, as FOLDER/keloOpenGL/NAME.
function(write_installed header name)
    file(READ ${root}/${header} content)
    # The first line is found like the others.
    set(content "\n${content}")
    string(REGEX MATCHALL "\n[ \t]*#[ \t]*include[ \t]*\"[^\"\n]*\"" includes "${content}")
    foreach(include IN LISTS includes)
        string(REGEX REPLACE ".*\"(.*)\"" "\\1" included "${include}")
        list(FIND KELO_PUBLIC_HEADERS "${included}" index)
        if(index EQUAL -1)
            message(FATAL_ERROR "${header} is public and includes ${included}, which is not")
        endif()
        list(GET KELO_INSTALLED_HEADERS ${index} included_name)
        string(REPLACE "${include}" "\n#include <keloOpenGL/${included_name}>" content "${content}")
    endforeach()
    string(SUBSTRING "${content}" 1 -1 content)
    set(present "")
    if(EXISTS ${folder}/${name})
        file(READ ${folder}/${name} present)
    endif()
    if(NOT present STREQUAL content)
        file(WRITE ${folder}/${name} "${content}")
    endif()
endfunction()

set(names ${KELO_INSTALLED_HEADERS})
list(REMOVE_DUPLICATES names)
if(NOT names STREQUAL KELO_INSTALLED_HEADERS)
    message(FATAL_ERROR "two public headers would have one name")
endif()
foreach(header name IN ZIP_LISTS KELO_PUBLIC_HEADERS KELO_INSTALLED_HEADERS)
    write_installed(${header} ${name})
endforeach()

file(GLOB_RECURSE present RELATIVE ${folder} ${folder}/*)
list(REMOVE_ITEM present ${KELO_INSTALLED_HEADERS})
foreach(stray IN LISTS present)
    file(REMOVE ${folder}/${stray})
endforeach()
