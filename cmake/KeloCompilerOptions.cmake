# kelo_options: the compiler's switches that every target of this project is built with.
add_library(kelo_options INTERFACE)
target_compile_options(kelo_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wnull-dereference -Wimplicit-fallthrough)
if(KELO_WARNINGS_AS_ERRORS)
    target_compile_options(kelo_options INTERFACE -Werror)
endif()

if(KELO_HARDENED)
    # Indexes and iterators of the standard library are checked, under the sanitizers too.
    target_compile_definitions(kelo_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(KELO_HARDENED AND NOT KELO_SANITIZE AND NOT KELO_COVERAGE)
    # Sanitizers watch the stack and the C library's calls themselves; without optimisation, as for
    # coverage, the C library cannot tell the sizes of buffers.
    target_compile_options(kelo_options INTERFACE -fstack-protector-strong)
    target_compile_options(kelo_options INTERFACE
        $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
        target_compile_options(kelo_options INTERFACE -fcf-protection=full)
    endif()
    # All symbols are looked up at the start, and the tables of them are read-only from then on.
    target_link_options(kelo_options INTERFACE -Wl,-z,relro -Wl,-z,now)
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
