# kelo_options: the compiler's switches that every target of this project is built with.
add_library(kelo_options INTERFACE)
target_compile_options(kelo_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wnull-dereference -Wimplicit-fallthrough)
if(KELO_WARNINGS_AS_ERRORS)
    target_compile_options(kelo_options INTERFACE -Werror)
endif()

if(KELO_SANITIZE)
    # -Wnull-dereference and friends report the sanitizer's own instrumentation.
    target_compile_options(kelo_options INTERFACE
        -fsanitize=${KELO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
        -Wno-null-dereference)
    target_link_options(kelo_options INTERFACE -fsanitize=${KELO_SANITIZE})
endif()

if(KELO_COVERAGE)
    target_compile_options(kelo_options INTERFACE --coverage -O0)
    target_link_options(kelo_options INTERFACE --coverage)
endif()
