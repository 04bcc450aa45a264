# One row for the bytes alone, one for the reader, one for another reader of the same format.
add_executable(objreader_benchmark ${CMAKE_CURRENT_LIST_DIR}/OBJReaderBenchmark.cpp)
target_include_directories(objreader_benchmark PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(objreader_benchmark PRIVATE
    kelo_options kelo_objreader benchmark::benchmark_main tinyobjloader::tinyobjloader)
