# kelo_room(NAME SOURCES file... [USES room...] [LINKS target...])
#
# One room of the library, compiled as objects that the library is put together from. USES names the
# rooms below; a room that is not named there is still found by the compiler (includes are written
# from the root), so the test `house.includes` is what holds the rule.
function(kelo_room NAME)
    cmake_parse_arguments(ROOM "" "" "SOURCES;USES;LINKS" ${ARGN})
    add_library(kelo_${NAME} OBJECT ${ROOM_SOURCES})
    target_include_directories(kelo_${NAME} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated>)
    target_link_libraries(kelo_${NAME} PRIVATE kelo_options PUBLIC ${ROOM_LINKS})
    # Only what is marked with KELO_EXPORT can be linked from outside of a shared library.
    set_target_properties(kelo_${NAME} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    foreach(room IN LISTS ROOM_USES)
        # Between object libraries this passes on include paths and Qt, never the objects.
        target_link_libraries(kelo_${NAME} PUBLIC kelo_${room})
    endforeach()
endfunction()
