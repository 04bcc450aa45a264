# What makes this project's own builds quick. A host that builds the library in its tree decides for
# itself, so the option is off by default and on in the presets.
#
# The preset `alone` leaves it off: there every source is compiled alone, which shows that each one
# includes what it uses.
if(NOT KELO_QUICK_BUILD)
    return()
endif()

# Unity batches: eight sources are compiled as one, so that Qt's headers are read once for them. Helpers
# of one target therefore need different names, in unnamed namespaces too. Larger batches save little
# more, and a change of one source then costs more.
set(CMAKE_UNITY_BUILD ON)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)

# A compiler cache, where there is one; paths below the base folder are the same for it in every clone.
find_program(KELO_CCACHE ccache)
if(KELO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${KELO_CCACHE})
endif()

# A linker that takes milliseconds, where there is one.
find_program(KELO_MOLD mold)
if(KELO_MOLD)
    add_link_options(-fuse-ld=mold)
endif()
mark_as_advanced(KELO_CCACHE KELO_MOLD)
