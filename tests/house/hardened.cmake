# Builds a small program with the options of the presets and looks at what came out. Called with
# SOURCE_DIR, WORK_DIR, GENERATOR, COMPILER, READELF and PROCESSOR.

file(READ ${SOURCE_DIR}/CMakePresets.json presets)

# preset_value(NAME VARIABLE): what a preset sets a variable to, or one that it inherits from.
function(preset_value name variable)
    string(JSON last LENGTH ${presets} configurePresets)
    math(EXPR last "${last} - 1")
    foreach(i RANGE ${last})
        string(JSON found GET ${presets} configurePresets ${i} name)
        if(NOT found STREQUAL name)
            continue()
        endif()
        string(JSON value ERROR_VARIABLE missing GET ${presets} configurePresets ${i}
            cacheVariables ${variable})
        if(missing)
            string(JSON parent ERROR_VARIABLE orphan GET ${presets} configurePresets ${i} inherits)
            if(orphan)
                set(value "")
            else()
                preset_value(${parent} ${variable})
            endif()
        endif()
        set(value "${value}" PARENT_SCOPE)
        return()
    endforeach()
    message(FATAL_ERROR "There is no preset ${name}")
endfunction()

# build(PRESET): the program with the options that the preset has, in `program`.
function(build preset)
    preset_value(${preset} KELO_HARDENED)
    set(hardened ${value})
    preset_value(${preset} KELO_SANITIZE)
    set(folder ${WORK_DIR}/${preset})
    file(REMOVE_RECURSE ${folder})
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/house/hardened -B ${folder} -G ${GENERATOR}
            -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_BUILD_TYPE=RelWithDebInfo
            -DOPTIONS_FILE=${SOURCE_DIR}/cmake/KeloCompilerOptions.cmake
            -DKELO_HARDENED=${hardened} -DKELO_SANITIZE=${value}
        COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    execute_process(COMMAND ${CMAKE_COMMAND} --build ${folder}
        COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    set(program ${folder}/hardened PARENT_SCOPE)
    file(READ ${folder}/objects.txt objects)
    set(objects "${objects}" PARENT_SCOPE)
endfunction()

# expect(TEXT PATTERN): the text has something of this form.
function(expect text pattern)
    if(NOT text MATCHES "${pattern}")
        message(FATAL_ERROR "${pattern} is missing in:\n${text}")
    endif()
endfunction()

function(read_elf options file)
    execute_process(COMMAND ${READELF} ${options} -W ${file} OUTPUT_VARIABLE text
        COMMAND_ERROR_IS_FATAL ANY)
    set(text "${text}" PARENT_SCOPE)
endfunction()

# expect_end(PATTERN ARGUMENT...): the program ends badly and says why.
function(expect_end pattern)
    execute_process(COMMAND ${program} ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(status EQUAL 0)
        message(FATAL_ERROR "'${ARGN}' passed unnoticed:\n${output}")
    endif()
    expect("${output}${errors}" "${pattern}")
endfunction()

foreach(preset dev release shared benchmarks)
    preset_value(${preset} KELO_HARDENED)
    expect("${preset}: ${value}" "ON")
endforeach()

build(release)
read_elf(-d ${program})
expect("${text}" "NOW")
expect("${text}" "PIE")
read_elf(-l ${program})
expect("${text}" "GNU_RELRO")
read_elf(--dyn-syms ${program})
expect("${text}" "__stack_chk_fail")
expect("${text}" "__strcpy_chk")
if(PROCESSOR STREQUAL "x86_64")
    # Of the object: whether the program keeps it is up to what the system links into it.
    read_elf(-n ${objects})
    expect("${text}" "IBT, SHSTK")
endif()
expect_end("__n < this->size" index)
expect_end("overflow detected" overflow "more than eight letters")
execute_process(COMMAND ${program} COMMAND_ERROR_IS_FATAL ANY)

build(asan)
expect_end("outside the range of representable values" cast 1e30)
expect_end("__n < this->size" index)
